// Where the shapes of a drawing lie.
//
// Threads: plain values and free functions. Fails: by none; what is not understood of a path or a
// transform ends it.
#pragma once

#include <optional>
#include <string_view>

#include "tools/tern/picture/Geometry.hpp"
#include "tools/tern/picture/SvgTags.hpp"

namespace tern::picture {

// Takes a point to (a x + c y + e, b x + d y + f).
struct Affine {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double e = 0;
  double f = 0;

  Point operator()(Point at) const { return {a * at.x + c * at.y + e, b * at.x + d * at.y + f}; }
  // First the inner one, then this.
  Affine after(const Affine& inner) const;
  // How much longer a length becomes, as a whole.
  double scale() const;
};

// "translate(10 20) rotate(90)"
Affine readTransform(std::string_view text);

// What holds the box where the transform takes it.
Box movedBy(const Affine& transform, const Box& box);

// Of an opening tag; none for what is no shape, and for one of no size. That of a curve holds the
// points that it is drawn by.
std::optional<Box> boxOfShape(const SvgTags& tag, const Affine& transform);

}  // namespace tern::picture
