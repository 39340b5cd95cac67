// The JSON reader and the writer. What is decoded comes back the same from each layout, and what is
// not says why; two other readers agree on both.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "fuzz/JsonPeers.hpp"
#include "fuzz/SeedDocuments.hpp"
#include "fuzz/Target.hpp"

namespace tern::fuzz {
namespace {

void readsBackTheSame(const Value& value, std::size_t bytesRead) {
  for (const auto layout : {JsonLayout::compact, JsonLayout::pretty, JsonLayout::rows}) {
    const std::string encoded = encodeJson(value, layout);
    const JsonResult again = decodeJson(encoded);
    require(!again.error && again.value == value, "what is written reads back equal");
    require(encodeJson(again.value, layout) == encoded, "and is written the same again");
    require(encoded.size() <= 32 * bytesRead + 32, "a text grows by no more than its indents");
  }
}

// RapidJSON is at times one step beside the nearest double, and of a zero with an exponent it makes
// whatever the compiler makes of the highest set bit of 0.
bool isNear(const Value& rapid, const Value& ours) {
  if (rapid.isNumber() && ours.isNumber()) {
    const double next = std::nextafter(rapid.number(), ours.number());
    return ours.number() == 0 || next == ours.number() || rapid.number() == ours.number();
  }
  if (rapid.kind() != ours.kind() || rapid.size() != ours.size()) return false;
  for (std::size_t i = 0; i < rapid.items().size(); ++i) {
    if (!isNear(rapid.items()[i], ours.items()[i])) return false;
  }
  for (std::size_t i = 0; i < rapid.entries().size(); ++i) {
    if (rapid.entries()[i].key != ours.entries()[i].key ||
        !isNear(rapid.entries()[i].value, ours.entries()[i].value)) {
      return false;
    }
  }
  return rapid.isList() || rapid.isMap() || rapid == ours;
}

// What our reader refuses on purpose, and others do not.
bool isStricter(const std::string& error) {
  const auto says = [&](const char* what) { return error.find(what) != std::string::npos; };
  return says("does not fit into 64 bits") || says("nest deeper than 512");
}

void othersAgree(const JsonResult& ours, const std::string& text) {
  const PeerReading simd = readBySimdjson(text);
  const PeerReading rapid = readByRapidJson(text);
  if (!ours.error) {
    require(simd.value && *simd.value == ours.value, "simdjson reads the same");
    require(rapid.hasLargeNumber || (rapid.value && isNear(*rapid.value, ours.value)),
            "RapidJSON reads the same");
  } else if (!isStricter(*ours.error)) {
    require(!simd.value, "simdjson refuses what we refuse");
    const bool isLax = ours.error->find("Half a surrogate") != std::string::npos ||
                       ours.error->find("fit into a double") != std::string::npos;
    require(!rapid.value || isLax, "RapidJSON refuses what we refuse");
  }
}

void run(const std::string& text) {
  const JsonResult result = decodeJson(text);
  if (result.error) {
    require(!result.error->empty() && result.value.isAbsent(), "an error says what is wrong");
  } else {
    readsBackTheSame(result.value, text.size());
  }
  const std::string mark = "\xEF\xBB\xBF";
  if (text.starts_with(mark)) return;
  othersAgree(result, text);
  const JsonResult marked = decodeJson(mark + text);
  require(marked.error.has_value() == result.error.has_value() && marked.value == result.value,
          "a byte order mark changes nothing");
}

std::vector<std::string> seeds() {
  std::vector<std::string> texts = {
      R"({"id":-12,"name":"Caf\u00e9 \"é€😀\"\n","at":[0.5,1e3,-2.25E-2],"open":true,"no":null})",
      R"(["\uD83D\uDE00\u0000\\\/",9223372036854775807,-9223372036854775808,1.7976931348623157e308])",
      R"([{"a":1,"b":2},{"a":1,"b":2,"a":3},{"b":4},[[[[[[[[[{}]]]]]]]]],5e-324,-0,0.1e-400,1E+2])",
      " [\r\n\t1 ,          2                  ]\n"};
  texts.push_back(std::string(511, '[') + "0" + std::string(511, ']'));
  texts.push_back(encodeJson(smallVenue(), JsonLayout::pretty));
  return texts;
}

}  // namespace

extern const Target jsonTarget{.name = "json", .takesJson = false, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
