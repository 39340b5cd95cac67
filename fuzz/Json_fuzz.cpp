// The JSON reader and the writer. What is decoded comes back the same from each layout, and what is
// not says why; two other readers agree on both.
#include <algorithm>
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

// What our reader refuses on purpose, and others do not.
bool isStricter(const std::string& error) {
  const auto says = [&](const char* what) { return error.find(what) != std::string::npos; };
  return says("does not fit into 64 bits") || says("nest deeper than 512");
}

void othersAgree(const JsonResult& ours, const std::string& text) {
  const std::optional<Value> simdjson = readBySimdjson(text);
  const std::optional<Value> nlohmann = readByNlohmann(text);
  if (!ours.error) {
    require(simdjson && *simdjson == ours.value, "simdjson reads the same");
    require(nlohmann && *nlohmann == ours.value, "nlohmann::json reads the same");
  } else if (!isStricter(*ours.error)) {
    require(!simdjson, "simdjson refuses what we refuse");
    require(!nlohmann, "nlohmann::json refuses what we refuse");
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
  texts.push_back("[0." + std::string(330, '9') + "e-400, 1" + std::string(330, '0') + "e-330]");
  texts.push_back(std::string(511, '[') + "0" + std::string(511, ']'));
  texts.push_back(encodeJson(smallVenue(), JsonLayout::pretty));
  return texts;
}

}  // namespace

extern const Target jsonTarget{.name = "json", .takesJson = false, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
