#include "bench/RapidJsonPeer.hpp"

#include <rapidjson/reader.h>

#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::bench {

namespace {

// Builds the tree from the reader's events: what is open lies on a stack, and a list or map takes
// its elements off it when it closes.
class TreeBuilder {
 public:
  bool Null() { return push(nullptr); }
  bool Bool(bool flag) { return push(flag); }
  bool Int(int number) { return push(number); }
  bool Uint(unsigned number) { return push(number); }
  bool Int64(std::int64_t number) { return push(number); }
  bool Uint64(std::uint64_t) { return false; }
  bool Double(double number) { return push(number); }
  bool RawNumber(const char*, rapidjson::SizeType, bool) { return false; }
  bool String(const char* text, rapidjson::SizeType size, bool) {
    return push(std::string_view(text, size));
  }
  bool Key(const char* text, rapidjson::SizeType size, bool) { return String(text, size, false); }
  bool StartObject() { return true; }
  bool StartArray() { return true; }
  bool EndObject(rapidjson::SizeType entries) { return close(2 * entries, Value::mapOf); }
  bool EndArray(rapidjson::SizeType items) { return close(items, Value::listOf); }

  Value take() { return std::move(open_.front()); }

 private:
  bool push(Value value) {
    open_.push_back(std::move(value));
    return true;
  }

  bool close(std::size_t count, Value (*make)(std::span<Value>)) {
    Value made = make(std::span(open_).last(count));
    open_.resize(open_.size() - count);
    return push(std::move(made));
  }

  std::vector<Value> open_;
};

}  // namespace

Value parseByRapidJson(std::string text) {
  constexpr unsigned strict = rapidjson::kParseFullPrecisionFlag |
                              rapidjson::kParseValidateEncodingFlag |
                              rapidjson::kParseIterativeFlag | rapidjson::kParseInsituFlag;
  rapidjson::InsituStringStream stream(text.data());
  rapidjson::Reader reader;
  TreeBuilder tree;
  if (!reader.Parse<strict>(stream, tree)) std::abort();
  return tree.take();
}

}  // namespace tern::bench
