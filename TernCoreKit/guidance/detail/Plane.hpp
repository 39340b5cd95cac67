// Lines in the plane of a map.
//
// Threads: any. Fails: never.
#pragma once

#include <cmath>

#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::inline v5::detail {

// The way from b to a.
inline TernCoordinate operator-(TernCoordinate a, TernCoordinate b) {
  return {a.x - b.x, a.y - b.y};
}

inline double apart(TernCoordinate a, TernCoordinate b) {
  const TernCoordinate way = a - b;
  return std::sqrt(way.x * way.x + way.y * way.y);
}

}  // namespace tern::detail
