// Finds room for labels beside the points they belong to, one after another.
//
// A label goes where it hides least: not over another label or marker if that can be had, and over
// as little of the route as possible. It always stays inside the window and near its point. All
// lengths are in pixels of the picture.
//
// Ownership: a plain value.
// Threads: one caller at a time.
// Fails: never; without room labels overlap.
//
//   LabelPlacer placer({358, 220});
//   placer.avoidLine(route);
//   const Box box = placer.place(route.back(), 12, {80, 22});
#pragma once

#include <vector>

#include "tools/tern/picture/Geometry.hpp"

namespace tern::picture {

class LabelPlacer {
 public:
  explicit LabelPlacer(Size window) : window_(window) {}

  void avoid(const Box& box) { taken_.push_back(box); }
  void avoidLine(const std::vector<Point>& line);

  // A box of that size for a label at least `clearance` from its point; it is taken from now on.
  // REQUIRES: the size is smaller than the window.
  Box place(Point point, double clearance, Size size);

 private:
  double penalty(const Box& box) const;

  Size window_;
  std::vector<Box> taken_;
  std::vector<Point> line_;
};

}  // namespace tern::picture
