// What a floor's drawing consists of, as far as its picture wants to know it: the colours that its
// floors and walls have, where something is drawn, and what is written there.
//
// A drawing is read as it stands: what its scripts would change, what it uses twice and what one
// shape hides of another is not followed.
//
// Ownership: a plain value. Threads: a free function. Fails: never; what is not well-formed ends
// the reading.
//
//   const DrawingMarks marks = marksOf(map.svg.text(), frame);
//   if (marks.isBlankIn(around)) ...
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/tern/picture/Colour.hpp"
#include "tools/tern/picture/Geometry.hpp"

namespace tern::picture {

// A text of a drawing; its place is an estimate.
struct DrawnText {
  std::string text;
  Box box;
  double fontSize = 0;
};

// All places and sizes are in map units.
struct DrawingMarks {
  // The colour of most of the floor, behind everything that is not as large as the drawing.
  std::optional<Colour> floor;
  // Of most of the lines that can be told from the floor, and of most other areas that can be.
  std::optional<Colour> lines;
  std::optional<Colour> areas;
  std::vector<Box> shapes;
  std::vector<DrawnText> texts;
  // Whether it holds images or the like, of which nothing is known.
  bool hasImages = false;

  // Whether next to nothing is drawn there, but what fills all of it.
  bool isBlankIn(const Box& part) const;
};

DrawingMarks marksOf(std::string_view svg, const Box& frame);

}  // namespace tern::picture
