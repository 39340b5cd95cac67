#include "fuzz/JsonPeers.hpp"

#include <simdjson.h>

#include <cstdint>
#include <nlohmann/json.hpp>
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
class TreeBuilder final : public nlohmann::json_sax<nlohmann::json> {
 public:
  bool null() override { return push(nullptr); }
  bool boolean(bool flag) override { return push(flag); }
  bool number_integer(std::int64_t number) override { return push(number); }
  bool number_unsigned(std::uint64_t number) override {
    return std::in_range<std::int64_t>(number) ? push(static_cast<std::int64_t>(number))
                                               : push(static_cast<double>(number));
  }
  bool number_float(double number, const std::string&) override { return push(number); }
  bool string(std::string& text) override { return push(std::string_view(text)); }
  bool binary(binary_t&) override { return false; }
  bool key(std::string& text) override { return string(text); }
  bool start_object(std::size_t) override { return start(); }
  bool start_array(std::size_t) override { return start(); }
  bool end_array() override {
    Value list = Value::list();
    for (Value& item : taken()) list.append(std::move(item));
    return push(std::move(list));
  }
  bool end_object() override {
    Value map = Value::map();
    std::vector<Value> parts = taken();
    for (std::size_t i = 0; i < parts.size(); i += 2) map.set(parts[i].text(), parts[i + 1]);
    return push(std::move(map));
  }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
    return false;
  }

  Value document() { return std::move(open_.front()); }

 private:
  bool push(Value value) {
    open_.push_back(std::move(value));
    return true;
  }
  bool start() {
    starts_.push_back(open_.size());
    return true;
  }
  // What has come since the last start.
  std::vector<Value> taken() {
    const auto first = open_.begin() + static_cast<std::ptrdiff_t>(starts_.back());
    std::vector<Value> values(std::make_move_iterator(first), std::make_move_iterator(open_.end()));
    open_.erase(first, open_.end());
    starts_.pop_back();
    return values;
  }

  std::vector<Value> open_;
  std::vector<std::size_t> starts_;
};

}  // namespace

std::optional<Value> readBySimdjson(const std::string& text) {
  simdjson::dom::parser parser;
  const simdjson::padded_string padded(text);
  simdjson::dom::element root;
  if (parser.parse(padded).get(root) != simdjson::SUCCESS) return std::nullopt;
  return fromSimdjson(root);
}

std::optional<Value> readByNlohmann(const std::string& text) {
  // It takes a NUL byte for the end of the text.
  if (text.find('\0') != std::string::npos) return std::nullopt;
  TreeBuilder builder;
  if (!nlohmann::json::sax_parse(text, &builder)) return std::nullopt;
  return builder.document();
}

}  // namespace tern::fuzz
