#include "TernCoreKit/platform/Json.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "TernCoreKit/platform/Numbers.hpp"
#include "TernCoreKit/platform/Utf8.hpp"
#include "TernCoreKit/platform/detail/JsonReader.hpp"
#include "TernCoreKit/platform/detail/JsonText.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5 {
namespace {

// What lies deeper stands on one line. Else a short text of many brackets would become a long one
// of spaces, by its depth and not by its length.
constexpr std::size_t deepestLine = 8;

// Whether the value may lie on the line of others in a layout of rows.
bool isPlain(const Value& value) {
  return !value.isMap() && std::ranges::none_of(value.items(), [](const Value& item) {
    return item.isMap() || item.isList();
  });
}

class JsonWriter {
 public:
  explicit JsonWriter(JsonLayout layout) : layout_(layout) {}

  void write(const Value& value);
  std::string take() { return std::move(out_); }

 private:
  void writeInteger(std::int64_t number);
  void writeDouble(double number);
  void writeText(std::string_view text);
  void writeEscaped(char c);
  void writeList(std::span<const Value> items);
  void writeMap(std::span<const Value::Entry> entries);
  void open(char bracket, bool isRow);
  void separate(bool isFirst);
  void close(char bracket, bool isEmpty);
  void startLine();

  const JsonLayout layout_;
  std::size_t depth_ = 0;
  // The depth of what lies on one line; 0 outside such a row.
  std::size_t rowDepth_ = 0;
  std::string out_;
};

void JsonWriter::write(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::absent:
    case Value::Kind::null:
      out_ += "null";
      break;
    case Value::Kind::boolean:
      out_ += value.flag() ? "true" : "false";
      break;
    case Value::Kind::integer:
      writeInteger(value.integer());
      break;
    case Value::Kind::number:
      writeDouble(value.number());
      break;
    case Value::Kind::text:
      writeText(value.text());
      break;
    case Value::Kind::list:
      writeList(value.items());
      break;
    case Value::Kind::map:
      writeMap(value.entries());
      break;
  }
}

void JsonWriter::writeInteger(std::int64_t number) {
  char digits[32];
  out_.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

void JsonWriter::writeDouble(double number) {
  if (!std::isfinite(number)) {
    out_ += "null";
    return;
  }
  // A whole number is as short without a point and reads back as an integer of the same value.
  // Beyond 64 bits it could not, and needs an exponent.
  constexpr double limit = 9223372036854775808.0;
  char digits[32];
  char* const end = digits + sizeof digits;
  out_.append(digits, std::abs(number) < limit
                          ? std::to_chars(digits, end, number).ptr
                          : std::to_chars(digits, end, number, std::chars_format::scientific).ptr);
}

void JsonWriter::writeText(std::string_view text) {
  out_ += '"';
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); at != end;) {
    const char* const run = at;
    while (at != end && isPlainInString(*at)) ++at;
    while (const std::size_t size = utf8SequenceSize(at, end)) at += size;
    out_.append(run, at);
    if (at != end && at == run) writeEscaped(*at++);
  }
  out_ += '"';
}

void JsonWriter::writeEscaped(char c) {
  constexpr std::string_view meanings = "\"\\\b\f\n\r\t";
  constexpr std::string_view letters = "\"\\bfnrt";
  constexpr std::string_view hexDigits = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  if (byte >= 0x80) {
    out_ += "\xEF\xBF\xBD";
  } else if (const std::size_t which = meanings.find(c); which != meanings.npos) {
    out_ += '\\';
    out_ += letters[which];
  } else {
    out_ += "\\u00";
    out_ += hexDigits[byte >> 4U];
    out_ += hexDigits[byte & 15U];
  }
}

void JsonWriter::writeList(std::span<const Value> items) {
  open('[', layout_ == JsonLayout::rows && std::ranges::all_of(items, isPlain));
  bool isFirst = true;
  for (const Value& item : items) {
    separate(std::exchange(isFirst, false));
    write(item);
  }
  close(']', isFirst);
}

void JsonWriter::writeMap(std::span<const Value::Entry> entries) {
  open('{',
       layout_ == JsonLayout::rows && std::ranges::all_of(entries, isPlain, &Value::Entry::value));
  bool isFirst = true;
  for (const auto& [key, value] : entries) {
    if (value.isAbsent()) continue;
    separate(std::exchange(isFirst, false));
    writeText(key.text());
    out_ += layout_ == JsonLayout::compact ? ":" : ": ";
    write(value);
  }
  close('}', isFirst);
}

void JsonWriter::open(char bracket, bool isRow) {
  out_ += bracket;
  ++depth_;
  const bool isOneLine = (isRow && depth_ > 1) || depth_ > deepestLine;
  if (isOneLine && rowDepth_ == 0) rowDepth_ = depth_;
}

void JsonWriter::separate(bool isFirst) {
  if (!isFirst) out_ += rowDepth_ == 0 ? "," : ", ";
  startLine();
}

void JsonWriter::close(char bracket, bool isEmpty) {
  const bool endsRow = rowDepth_ == depth_;
  --depth_;
  if (!isEmpty && !endsRow) startLine();
  if (endsRow) rowDepth_ = 0;
  out_ += bracket;
}

void JsonWriter::startLine() {
  if (layout_ == JsonLayout::compact || rowDepth_ > 0) return;
  out_ += '\n';
  out_.append((layout_ == JsonLayout::pretty ? 4 : 1) * depth_, ' ');
}

JsonResult readDocument(std::string& text) {
  JsonReader reader(text);
  if (!reader.read()) return {Value(), reader.error()};
  return {reader.takeDocument(), std::nullopt};
}

}  // namespace

JsonResult decodeJson(std::string text) {
  // Lengths and counts of values have 32 bits.
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
    return {Value(), "A document of 4 GiB or more. (offset 0)"};
  }
  JsonResult result;
  const bool isRead = detail::attempt([&] { result = readDocument(text); });
  return isRead ? std::move(result) : JsonResult{Value(), detail::outOfMemory};
}

std::string encodeJson(const Value& value, JsonLayout layout) {
  JsonWriter writer(layout);
  writer.write(value);
  return writer.take();
}

double shortestDouble(float number) {
  if (!std::isfinite(number)) return number;
  char digits[32];
  const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  double result = 0;
  readDouble(digits, end, result);
  // One float there is whose shortest form lies so near to the middle between two floats that the
  // double rounds to the other one: 7.038531e-26.
  return static_cast<float>(result) == number ? result : number;
}

}  // namespace tern
