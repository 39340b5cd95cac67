#include "tools/tern/picture/Markup.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace tern::picture {

namespace {

constexpr std::uint32_t replacement = 0xFFFD;
constexpr double largestNumber = 1e7;

bool isAllowed(std::uint32_t code) {
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
  if (code >= 0xD800 && code < 0xE000) return false;
  return code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF;
}

std::string_view named(std::uint32_t code) {
  switch (code) {
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '&':
      return "&amp;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return {};
  }
}

// How many bytes follow the given first byte; none for one that cannot be first.
std::size_t bytesAfter(unsigned char first) {
  if (first >= 0xC2 && first < 0xE0) return 1;
  if (first >= 0xE0 && first < 0xF0) return 2;
  return first >= 0xF0 && first < 0xF5 ? 3 : 0;
}

}  // namespace

bool appendUtf8(std::string& to, std::uint32_t code) {
  if (!isAllowed(code)) return false;
  const auto add = [&](std::uint32_t byte) { to += static_cast<char>(byte); };
  const auto addTail = [&](std::uint32_t shift) { add(0x80U | (code >> shift & 0x3FU)); };
  if (code < 0x80) {
    add(code);
  } else if (code < 0x800) {
    add(0xC0U | code >> 6U);
    addTail(0);
  } else if (code < 0x10000) {
    add(0xE0U | code >> 12U);
    addTail(6);
    addTail(0);
  } else {
    add(0xF0U | code >> 18U);
    addTail(12);
    addTail(6);
    addTail(0);
  }
  return true;
}

detail::CodePoint detail::firstCodePoint(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x80) return {byte(0), 1};
  const std::size_t tail = bytesAfter(byte(0));
  if (tail == 0 || text.size() <= tail) return {replacement, 1};
  std::uint32_t code = byte(0) & (0x3FU >> tail);
  for (std::size_t i = 1; i <= tail; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) return {replacement, 1};
    code = code << 6U | (byte(i) & 0x3FU);
  }
  constexpr std::uint32_t least[] = {0, 0x80, 0x800, 0x10000};
  if (code < least[tail] || !isAllowed(code)) return {replacement, 1};
  return {code, tail + 1};
}

std::string escaped(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  eachCodePoint(text, [&](std::uint32_t code, std::string_view) {
    if (const std::string_view name = named(code); !name.empty()) {
      out += name;
    } else if (!appendUtf8(out, code)) {
      appendUtf8(out, replacement);
    }
  });
  return out;
}

std::string decimal(double number) {
  if (!std::isfinite(number)) return "0";
  const double held = std::clamp(number, -largestNumber, largestNumber);
  std::array<char, 32> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), held, std::chars_format::fixed, 2)
          .ptr;
  std::string out(digits.data(), end);
  out.erase(out.find_last_not_of('0') + 1);
  if (out.back() == '.') out.pop_back();
  return out == "-0" ? "0" : out;
}

std::string significant(double number) {
  if (!std::isfinite(number)) return "0";
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                 std::chars_format::general, 9)
                       .ptr;
  return {digits.data(), end};
}

void Markup::begin(std::string_view element, Attributes attributes) {
  out_ += '<';
  out_ += element;
  for (const Attribute& attribute : attributes) {
    out_ += ' ';
    out_ += attribute.name;
    out_ += "=\"";
    out_ += escaped(attribute.value);
    out_ += '"';
  }
}

Markup& Markup::open(std::string_view element, Attributes attributes) {
  begin(element, attributes);
  out_ += '>';
  open_.push_back(element);
  return *this;
}

Markup& Markup::close() {
  out_ += "</";
  out_ += open_.back();
  out_ += ">";
  open_.pop_back();
  return *this;
}

Markup& Markup::leaf(std::string_view element, Attributes attributes) {
  begin(element, attributes);
  out_ += "/>";
  return *this;
}

Markup& Markup::leaf(std::string_view element, Attributes attributes, std::string_view text) {
  return open(element, attributes).text(text).close();
}

Markup& Markup::text(std::string_view text) {
  out_ += escaped(text);
  return *this;
}

Markup& Markup::line() {
  out_ += '\n';
  return *this;
}

Markup& Markup::raw(std::string_view markup) {
  out_ += markup;
  return *this;
}

std::string Markup::take() {
  while (!open_.empty()) close();
  return std::exchange(out_, {});
}

}  // namespace tern::picture
