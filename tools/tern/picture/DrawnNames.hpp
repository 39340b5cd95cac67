// What a floor's drawing says in letters, as large as a picture shows them. A name of several words
// may be several texts of the drawing, one after another.
//
// All lengths are in pixels of the picture.
//
// Ownership: borrows the floor's marks. Threads: one caller at a time. Fails: never.
//
//   const DrawnNames drawn(floor.marks, window);
//   if (drawn.isReadable("Coral Books")) ...
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/tern/picture/DrawingMarks.hpp"
#include "tools/tern/picture/Geometry.hpp"
#include "tools/tern/picture/MapWindow.hpp"

namespace tern::picture {

class DrawnNames {
 public:
  DrawnNames(const DrawingMarks& marks, const MapWindow& window);

  // Of every text that is large enough to be seen.
  const std::vector<Box>& boxes() const { return boxes_; }

  // Whether the drawing says it, anywhere, in letters that can be read.
  bool isReadable(std::string_view name) const;

  // Round the nearest place where the drawing says it in any letters that are seen, with its middle
  // at most so far from the point.
  std::optional<Box> nearest(std::string_view name, Point point, double atMost) const;

 private:
  std::optional<Box> nameFrom(std::size_t first, std::string_view name) const;

  std::vector<std::string_view> texts_;
  std::vector<Box> boxes_;
  std::unordered_multimap<std::string_view, std::size_t> byText_;
  // All that can be read, with a blank around each text.
  std::string readable_ = " ";
};

}  // namespace tern::picture
