// Points and boxes of drawings: x to the right, y downward. Whoever holds one says in which units;
// `Number` is int where they are whole, else double.
//
// Threads: plain values.
// Fails: never.
#pragma once

#include <algorithm>
#include <compare>

namespace tern::drawing {

template <class Number>
struct PointOf {
  Number x = 0;
  Number y = 0;

  friend auto operator<=>(const PointOf&, const PointOf&) = default;
};

template <class Number>
struct BoxOf {
  Number left = 0;
  Number top = 0;
  Number right = 0;
  Number bottom = 0;

  Number width() const { return right - left; }
  Number height() const { return bottom - top; }
  PointOf<Number> centre() const { return {(left + right) / 2, (top + bottom) / 2}; }
  BoxOf grownBy(Number margin) const {
    return {left - margin, top - margin, right + margin, bottom + margin};
  }
  bool contains(PointOf<Number> point) const {
    return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
  }
  // The least box that holds both.
  BoxOf with(const BoxOf& other) const {
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
            std::max(bottom, other.bottom)};
  }
  bool meets(const BoxOf& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
  // The area that both cover.
  Number overlap(const BoxOf& other) const {
    if (!meets(other)) return 0;
    return (std::min(right, other.right) - std::max(left, other.left)) *
           (std::min(bottom, other.bottom) - std::max(top, other.top));
  }
};

}  // namespace tern::drawing
