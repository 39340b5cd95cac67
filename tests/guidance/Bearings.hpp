// Directions in the plane, as tests of guidance look at them.
#pragma once

#include <cmath>
#include <optional>

#include "TernCoreKit/guidance/TernStep.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::test {

inline TernCoordinate wayTo(TernCoordinate from, TernCoordinate to) {
  return {to.x - from.x, to.y - from.y};
}
inline double lengthOf(TernCoordinate way) { return std::hypot(way.x, way.y); }
// From one to the other, to the right above 0 where y points down.
inline double degrees(TernCoordinate a, TernCoordinate b) {
  return std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y) * 180 / 3.14159265358979;
}

// -1 left, 1 right, 0 neither
inline int sideOf(const std::optional<TernDirection>& direction) {
  using enum TernDirection;
  if (direction == left || direction == slightLeft || direction == sharpLeft) return -1;
  if (direction == right || direction == slightRight || direction == sharpRight) return 1;
  return 0;
}

inline TernDirection mirrored(TernDirection direction) {
  using enum TernDirection;
  switch (direction) {
    case left:
      return right;
    case right:
      return left;
    case slightLeft:
      return slightRight;
    case slightRight:
      return slightLeft;
    case sharpLeft:
      return sharpRight;
    case sharpRight:
      return sharpLeft;
    case around:
      break;
  }
  return direction;
}

}  // namespace tern::test
