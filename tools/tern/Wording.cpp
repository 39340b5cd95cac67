#include "tools/tern/Wording.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "TernCoreKit/platform/Numbers.hpp"

namespace tern::command {

namespace {

bool isAsciiControl(char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F; }

// Whether a byte behind C2 makes a control character of it.
bool isLateControl(char byte) {
  return static_cast<unsigned char>(byte) >= 0x80 && static_cast<unsigned char>(byte) < 0xA0;
}

std::from_chars_result readNumber(const char* first, const char* last, std::int64_t& number) {
  return std::from_chars(first, last, number);
}
std::from_chars_result readNumber(const char* first, const char* last, double& number) {
  return readDouble(first, last, number);
}

template <class Number>
std::optional<Number> parseAll(std::string_view text) {
  Number number{};
  const auto [end, error] = readNumber(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

std::string onOneLine(std::string_view text) {
  std::string line = onItsLines(text);
  std::ranges::replace(line, '\n', ' ');
  return line;
}

std::string onItsLines(std::string_view text) {
  std::string lines(text);
  char before = '\0';
  for (char& byte : lines) {
    const bool isControl = isAsciiControl(byte) || (before == '\xC2' && isLateControl(byte));
    before = byte;
    if (isControl && byte != '\n') byte = ' ';
  }
  // The first byte of a control character of two stands alone now.
  for (std::size_t i = lines.find('\xC2'); i != std::string::npos; i = lines.find('\xC2', i + 1)) {
    if (i + 1 < lines.size() && lines[i + 1] == ' ') lines[i] = ' ';
  }
  return lines;
}

std::string padded(std::string_view text, std::size_t width) {
  std::string wide(text);
  wide.resize(std::max(width, wide.size()), ' ');
  return wide;
}

std::optional<std::int64_t> parseWhole(std::string_view text) {
  return parseAll<std::int64_t>(text);
}

std::optional<std::vector<std::int64_t>> parseWholes(std::string_view text) {
  std::vector<std::int64_t> wholes;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(',', start), text.size());
    const auto whole = parseWhole(text.substr(start, end - start));
    if (!whole) return std::nullopt;
    wholes.push_back(*whole);
    start = end + 1;
  }
  return wholes;
}

std::optional<double> parseNumber(std::string_view text) {
  const auto number = parseAll<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<TernCoordinate> parsePoint(std::string_view text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  const auto x = parseNumber(text.substr(0, comma));
  const auto y = parseNumber(text.substr(comma + 1));
  if (!x || !y) return std::nullopt;
  return TernCoordinate{*x, *y};
}

std::string numberText(double number) {
  std::array<char, 32> digits;
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), number == 0 ? 0 : number).ptr;
  return {digits.data(), end};
}

}  // namespace tern::command
