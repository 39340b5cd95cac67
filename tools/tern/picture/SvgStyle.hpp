// How an element of a drawing is painted: by its attributes, its style and the drawing's own style
// sheet, as far as that goes by the names of elements and classes.
//
// Ownership: a sheet borrows its text. Threads: plain values. Fails: never; what is not understood
// changes nothing.
//
//   SvgSheet sheet;
//   sheet.add(".wall { stroke: #333 }");
//   const SvgStyle inner = styleOf(tags, outer, sheet);
#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "tools/tern/picture/Colour.hpp"
#include "tools/tern/picture/SvgTags.hpp"

namespace tern::picture {

struct SvgStyle {
  std::optional<Paint> fill = Paint{};
  std::optional<Paint> stroke = std::nullopt;
  double fillOpacity = 1;
  double strokeOpacity = 1;
  // With that of all around it.
  double opacity = 1;
  double fontSize = 16;
  // Of a text: -1 begins at its point, 0 has its middle there, 1 ends there.
  int anchor = -1;
  bool isShown = true;
};

// What is said of each property, in the order that SvgStyle.cpp lists them; empty where nothing is.
using SvgDeclarations = std::array<std::string_view, 9>;

class SvgSheet {
 public:
  void add(std::string_view text);

  // Writes over what is there what the sheet says of the selector, such as "rect" or ".wall".
  void declare(std::string_view selector, SvgDeclarations& declarations) const;

 private:
  std::map<std::string, SvgDeclarations, std::less<>> rules_;
};

// Of the element that the opening tag begins, within one of that style.
SvgStyle styleOf(const SvgTags& tag, const SvgStyle& outer, const SvgSheet& sheet);

}  // namespace tern::picture
