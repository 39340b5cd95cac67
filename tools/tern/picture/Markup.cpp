#include "tools/tern/picture/Markup.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "tools/drawing/XmlText.hpp"

namespace tern::picture {

namespace {

constexpr double largestNumber = 1e7;

}  // namespace

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
    out_ += drawing::escaped(attribute.value);
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
  out_ += drawing::escaped(text);
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
