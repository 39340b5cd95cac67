#include "fuzz/JsonMutator.hpp"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/ValuePlaces.hpp"

namespace tern::fuzz {

using test::countValues;
using test::nthValue;

namespace {

std::vector<Value> itemsOf(const Value& list) { return {list.items().begin(), list.items().end()}; }

}  // namespace

JsonMutator::JsonMutator(std::uint64_t seed, MutateBytes mutateBytes)
    : random_(seed), mutateBytes_(std::move(mutateBytes)) {}

std::string JsonMutator::mutate(const std::string& text, const std::string& other,
                                std::size_t mostBytes) {
  JsonResult decoded = decodeJson(text);
  if (decoded.error) return mutateBytes_(text);
  document_ = std::move(decoded.value);
  other_ = decodeJson(other).value;
  for (std::size_t left = 1 + below(4); left > 0; --left) change(anyIn(document_));
  std::string changed = encodeJson(document_, JsonLayout::compact);
  return changed.size() <= std::max(mostBytes, text.size()) ? changed : mutateBytes_(text);
}

Value& JsonMutator::anyIn(Value& document) {
  std::size_t n = below(countValues(document));
  return *nthValue(document, n);
}

Value JsonMutator::copyOfAny() {
  return anyIn(!other_.isAbsent() && below(3) == 0 ? other_ : document_);
}

void JsonMutator::change(Value& value) {
  switch (below(8)) {
    case 0:
      value = interesting();
      break;
    case 1: {
      Value copy = copyOfAny();
      value = std::move(copy);
      break;
    }
    case 2:
      value = Value::list({Value(value)});
      break;
    default:
      if (value.isList()) {
        changeList(value);
      } else if (value.isMap()) {
        changeMap(value);
      } else {
        changeScalar(value);
      }
  }
}

void JsonMutator::changeScalar(Value& value) {
  if (value.isText()) {
    value = mutateBytes_(std::string(value.text()));
  } else if (value.isNumber()) {
    changeNumber(value);
  } else {
    value = interesting();
  }
}

void JsonMutator::changeNumber(Value& value) {
  const double number = value.number();
  const auto whole = static_cast<std::uint64_t>(value.integer());
  const Value changed[] = {static_cast<std::int64_t>(whole + 1),
                           static_cast<std::int64_t>(whole - 1),
                           static_cast<std::int64_t>(0 - whole),
                           static_cast<std::int64_t>(whole ^ std::uint64_t{1} << below(64)),
                           static_cast<std::int64_t>(below(300)),
                           number * 0.5,
                           number + 0.1,
                           -number,
                           value.printed()};
  value = changed[below(std::size(changed))];
}

void JsonMutator::changeList(Value& list) {
  std::vector<Value> items = itemsOf(list);
  const std::size_t at = below(items.size() + 1);
  switch (items.empty() ? 0 : below(5)) {
    case 0:
      items.insert(items.begin() + static_cast<std::ptrdiff_t>(at), copyOfAny());
      break;
    case 1:
      items.erase(items.begin() + static_cast<std::ptrdiff_t>(below(items.size())));
      break;
    case 2:
      std::swap(items[below(items.size())], items[below(items.size())]);
      break;
    case 3:
      for (std::size_t copies = 1 + below(20); copies > 0; --copies) {
        items.push_back(items[below(items.size())]);
      }
      break;
    default:
      items.resize(at);
  }
  list = Value::listOf(items);
}

void JsonMutator::changeMap(Value& map) {
  const auto entries = map.entries();
  if (entries.empty()) return map.set(mutateBytes_("id"), interesting());
  const std::size_t at = below(entries.size());
  switch (below(4)) {
    case 0: {  // a key less
      Value rest = Value::map();
      for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i != at) rest.set(entries[i].key.text(), entries[i].value);
      }
      map = std::move(rest);
      break;
    }
    case 1:
      map.set(mutateBytes_(std::string(entries[at].key.text())), copyOfAny());
      break;
    case 2:
      std::swap(entries[at].value, entries[below(entries.size())].value);
      break;
    default:
      entries[at].value = copyOfAny();
  }
}

Value JsonMutator::interesting() {
  constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
  const Value values[] = {nullptr,
                          true,
                          false,
                          0,
                          -1,
                          1,
                          2,
                          100,
                          -largest - 1,
                          largest,
                          std::int64_t{1} << 31,
                          -(std::int64_t{1} << 31),
                          std::int64_t{1} << 32,
                          std::int64_t{1} << 53,
                          -0.0,
                          0.5,
                          1e-30,
                          3.5e38,
                          1e308,
                          -1e308,
                          5e-324,
                          "",
                          "1:1",
                          "Exit",
                          ":",
                          "..",
                          "/",
                          "-12.5",
                          "inf",
                          "nan",
                          std::string(300, 'x'),
                          Value::list(),
                          Value::map(),
                          Value::list({0, 0}),
                          Value::map({{"items", Value::list()}})};
  return values[below(std::size(values))];
}

std::string mutateSomeBytes(std::string bytes, std::mt19937_64& random) {
  constexpr std::string_view telling = "\"\\/{}[]:,.-+eE0 9\n\r\t%&=?#@\x80\xff";
  for (std::size_t left = 1 + random() % 4; left > 0; --left) {
    const std::size_t at = random() % (bytes.size() + 1);
    const std::size_t length = std::min<std::size_t>(random() % 8, bytes.size() - at);
    switch (random() % 4) {
      case 0:
        bytes.erase(at, length);
        break;
      case 1:
        bytes.insert(at, bytes.substr(random() % (bytes.size() + 1), 8));
        break;
      case 2:
        bytes.insert(at, 1, telling[random() % telling.size()]);
        break;
      default:
        if (at < bytes.size()) bytes[at] = static_cast<char>(random());
    }
  }
  return bytes;
}

}  // namespace tern::fuzz
