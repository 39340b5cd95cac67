// Writes XML that is well-formed by construction: elements close in the order they opened, texts
// and attribute values are escaped, numbers are always plain decimals.
//
// HTML is written with it too; void elements then come out as <meta/>, which HTML reads alike.
// Ownership: a plain value.
// Threads: as a standard container.
// Fails: never; bytes that are not UTF-8 and characters that XML forbids become U+FFFD.
//
//   Markup markup;
//   markup.open("g").leaf("circle", {{"cx", 3.5}, {"r", 2}}).close();
//   markup.take();
#pragma once

#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tern::picture {

// At most two decimals and no exponent, held within ten million; 0 for what is not finite.
std::string decimal(double number);

// Nine significant digits, with an exponent where that is shorter, as attributes of drawings take
// them; 0 for what is not finite.
std::string significant(double number);

class Markup {
 public:
  struct Attribute {
    Attribute(std::string_view attribute, std::string_view text) : name(attribute), value(text) {}
    Attribute(std::string_view attribute, const char* text) : name(attribute), value(text) {}
    Attribute(std::string_view attribute, const std::string& text) : name(attribute), value(text) {}
    template <class T>
    requires(std::integral<T> || std::floating_point<T>)
        Attribute(std::string_view attribute, T number)
        : name(attribute), value(decimal(static_cast<double>(number))) {}

    std::string_view name;
    std::string value;
  };
  using Attributes = std::initializer_list<Attribute>;

  // `element` is kept until it is closed: it must be a literal.
  Markup& open(std::string_view element, Attributes attributes = {});
  Markup& close();
  // An element without contents, and one with a text.
  Markup& leaf(std::string_view element, Attributes attributes);
  Markup& leaf(std::string_view element, Attributes attributes, std::string_view text);
  Markup& text(std::string_view text);
  // A line break, for whoever reads the file.
  Markup& line();
  // REQUIRES: well-formed by itself.
  Markup& raw(std::string_view markup);

  // Closes what is open and gives the whole; nothing is left.
  std::string take();

 private:
  void begin(std::string_view element, Attributes attributes);

  std::string out_;
  std::vector<std::string_view> open_;
};

}  // namespace tern::picture
