#include "tools/tern/picture/Markup.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace tern::picture {

namespace {

constexpr double largestNumber = 1e7;

bool isAllowed(char32_t code) {
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
  if (code >= 0xD800 && code < 0xE000) return false;
  return code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF;
}

std::string_view named(char32_t code) {
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

}  // namespace

bool appendUtf8(std::string& to, char32_t code) {
  if (!isAllowed(code)) return false;
  std::array<char, 4> bytes{};
  to.append(bytes.data(), putUtf8(bytes.data(), code));
  return true;
}

Utf8Character detail::firstCharacter(std::string_view text) {
  const Utf8Character first = firstUtf8Character(text);
  if (first.size > 1 && !isAllowed(first.code)) return {Utf8Character::replacement, 1};
  return first;
}

std::string escaped(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  eachCodePoint(text, [&](char32_t code, std::string_view) {
    if (const std::string_view name = named(code); !name.empty()) {
      out += name;
    } else if (!appendUtf8(out, code)) {
      appendUtf8(out, Utf8Character::replacement);
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
