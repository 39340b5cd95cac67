// The plane that a building is drawn on: metres east and south of an origin, true to a ten
// thousandth within a kilometre of it, on the ellipsoid WGS 84.
//
// It is the plane of Web Mercator, whose two axes are stretched apart so that a metre at the origin
// is a metre in both. So what the library makes of a map and its corners on the globe is exact, not
// nearly so: map and globe agree however large the site is.
//
//   const LocalPlane plane({139.6, 35.5});
//   const Point at = plane.at({139.6001, 35.5});  // {9.07, 0}
//
// Threads: plain values.
// Fails: never; REQUIRES: latitudes short of the poles.
#pragma once

#include "tools/drawing/Geometry.hpp"

namespace tern::imports {

// Metres on the plane: x to the east, y to the south.
using Point = drawing::PointOf<double>;
using Box = drawing::BoxOf<double>;

// Of the ellipsoid WGS 84 and of GRS 80, in metres.
inline constexpr double semiMajorAxis = 6378137.0;

// Degrees.
struct LonLat {
  double longitude = 0;
  double latitude = 0;

  friend bool operator==(const LonLat&, const LonLat&) = default;
};

// Metres of Web Mercator, y to the north.
Point mercatorOf(LonLat place);

class LocalPlane {
 public:
  LocalPlane() : LocalPlane(LonLat{}) {}
  explicit LocalPlane(LonLat origin);

  Point at(LonLat place) const;

  // A point of the plane in metres of Web Mercator.
  Point mercatorAt(Point point) const {
    return {origin_.x + point.x / east_, origin_.y - point.y / south_};
  }

 private:
  Point origin_;
  double east_;
  double south_;
};

}  // namespace tern::imports
