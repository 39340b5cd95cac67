// Finds room for labels beside the points they belong to, one after another.
//
// A label that has to be there goes where it hides least: not over another label or marker if that
// can be had, and over as little of the route as possible. It always stays inside the window and
// near its point. A name that need not be there goes where it hides nothing, or nowhere. How long
// either takes does not depend on how much is there already. All lengths are in pixels of the
// picture.
//
// Ownership: a plain value.
// Threads: one caller at a time.
// Fails: never; without room labels overlap.
//
//   LabelPlacer placer({358, 220});
//   placer.avoidLine(route, 5);
//   const Box box = placer.place(route.back(), 12, {80, 22});
#pragma once

#include <optional>
#include <vector>

#include "tools/tern/picture/Geometry.hpp"
#include "tools/tern/picture/TakenCells.hpp"

namespace tern::picture {

class LabelPlacer {
 public:
  explicit LabelPlacer(Size window) : window_(window), taken_(window), lines_(window) {}

  void avoid(const Box& box) { taken_.take(box); }
  // What labels that must be there may hide if need be, as they may a line.
  void avoidLightly(const Box& box) { lines_.take(box); }
  void avoidLine(const std::vector<Point>& line, double halfWidth);

  // A box of that size for a label at least `clearance` from its point; it is taken from now on.
  // REQUIRES: the size is smaller than the window.
  Box place(Point point, double clearance, Size size);

  // A box of that size on its point or beside it where nothing is, whole within the window, which
  // is taken from now on; none without room.
  std::optional<Box> fit(Point point, double clearance, Size size);

  // A box of that size in the middle of what is drawn and avoided lightly, so that it hides that
  // and nothing else, whole within the window, which is taken from now on; none where it would hide
  // more or not all of that.
  std::optional<Box> cover(const Box& drawn, Size size);

 private:
  double penalty(const Box& box) const;
  bool isWhole(const Box& box) const;
  bool isFree(const Box& box) const;

  Size window_;
  TakenCells taken_;
  TakenCells lines_;
};

}  // namespace tern::picture
