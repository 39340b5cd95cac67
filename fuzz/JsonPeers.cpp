#include "fuzz/JsonPeers.hpp"

// It asserts that a number is finite which it is about to refuse for its size.
struct NumberTooLarge {};
#define RAPIDJSON_ASSERT(condition) ((condition) ? void() : throw NumberTooLarge())

#include <rapidjson/error/error.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <simdjson.h>

#include <cmath>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace tern::fuzz {

namespace {

Value fromSimdjson(const simdjson::dom::element& element) {
  using Type = simdjson::dom::element_type;
  switch (element.type()) {
    case Type::ARRAY: {
      Value list = Value::list();
      for (const simdjson::dom::element item : simdjson::dom::array(element)) {
        list.append(fromSimdjson(item));
      }
      return list;
    }
    case Type::OBJECT: {
      Value map = Value::map();
      for (const auto& field : simdjson::dom::object(element)) {
        map.set(field.key, fromSimdjson(field.value));
      }
      return map;
    }
    case Type::INT64:
      return std::int64_t(element);
    case Type::UINT64:
      return static_cast<double>(std::uint64_t(element));
    case Type::DOUBLE:
      return double(element);
    case Type::STRING:
      return std::string_view(element);
    case Type::BOOL:
      return bool(element);
    default:
      return nullptr;
  }
}

// Builds the tree of the reader's events; what is open lies on a stack.
class TreeBuilder {
 public:
  bool Null() { return push(nullptr); }
  bool Bool(bool flag) { return push(flag); }
  bool Int(int number) { return push(number); }
  bool Uint(unsigned number) { return push(number); }
  bool Int64(std::int64_t number) { return push(number); }
  bool Uint64(std::uint64_t number) { return push(static_cast<double>(number)); }
  bool Double(double number) { return push(number); }
  bool RawNumber(const char*, rapidjson::SizeType, bool) { return false; }
  bool String(const char* text, rapidjson::SizeType size, bool) {
    return push(std::string_view(text, size));
  }
  bool Key(const char* text, rapidjson::SizeType size, bool) { return String(text, size, false); }
  bool StartObject() { return true; }
  bool StartArray() { return true; }
  bool EndArray(rapidjson::SizeType items) {
    Value list = Value::list();
    for (Value& item : taken(items)) list.append(std::move(item));
    return push(std::move(list));
  }
  bool EndObject(rapidjson::SizeType entries) {
    Value map = Value::map();
    std::vector<Value> parts = taken(std::size_t{2} * entries);
    for (std::size_t i = 0; i < parts.size(); i += 2) map.set(parts[i].text(), parts[i + 1]);
    return push(std::move(map));
  }

  Value document() { return std::move(open_.front()); }

 private:
  bool push(Value value) {
    open_.push_back(std::move(value));
    return true;
  }
  std::vector<Value> taken(std::size_t count) {
    const auto first = open_.end() - static_cast<std::ptrdiff_t>(count);
    std::vector<Value> values(std::make_move_iterator(first), std::make_move_iterator(open_.end()));
    open_.erase(first, open_.end());
    return values;
  }

  std::vector<Value> open_;
};

}  // namespace

PeerReading readBySimdjson(const std::string& text) {
  simdjson::dom::parser parser;
  const simdjson::padded_string padded(text);
  simdjson::dom::element root;
  const simdjson::error_code error = parser.parse(padded).get(root);
  if (error == simdjson::SUCCESS) return {.value = fromSimdjson(root)};
  return {.value = {}, .hasLargeNumber = error == simdjson::NUMBER_ERROR};
}

PeerReading readByRapidJson(const std::string& text) {
  constexpr unsigned strict = rapidjson::kParseFullPrecisionFlag |
                              rapidjson::kParseValidateEncodingFlag |
                              rapidjson::kParseIterativeFlag;
  rapidjson::MemoryStream stream(text.data(), text.size());
  rapidjson::Reader reader;
  TreeBuilder builder;
  try {
    const rapidjson::ParseResult result = reader.Parse<strict>(stream, builder);
    // A NUL byte counts as the end there.
    if (!result.IsError() && stream.Tell() == text.size()) return {.value = builder.document()};
    return {.value = {}, .hasLargeNumber = result.Code() == rapidjson::kParseErrorNumberTooBig};
  } catch (const NumberTooLarge&) {
    return {.value = {}, .hasLargeNumber = true};
  }
}

}  // namespace tern::fuzz
