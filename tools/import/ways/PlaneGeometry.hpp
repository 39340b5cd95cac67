// The little geometry that making ways takes, in metres on the plane.
//
// Threads: free functions. Fails: never.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

inline Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
inline Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
inline Point operator*(Point a, double by) { return {a.x * by, a.y * by}; }

inline double dotOf(Point a, Point b) { return a.x * b.x + a.y * b.y; }
inline double crossOf(Point a, Point b) { return a.x * b.y - a.y * b.x; }
inline double lengthOf(Point a) { return std::sqrt(dotOf(a, a)); }
inline double apart(Point a, Point b) { return lengthOf(b - a); }
inline Point between(Point a, Point b, double part) { return a + (b - a) * part; }

// The point of the segment that is nearest.
inline Point nearestOn(Point a, Point b, Point to) {
  const Point way = b - a;
  const double squared = dotOf(way, way);
  if (squared == 0) return a;
  return between(a, b, std::clamp(dotOf(to - a, way) / squared, 0.0, 1.0));
}

// Calls with the ends of each side of the polygon, that of its last point to its first included.
template <class Use>
void forEachSide(const Polygon& polygon, Use use) {
  for (const Line& ring : polygon.rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) use(ring[i], ring[(i + 1) % ring.size()]);
  }
}

// Of all its rings; REQUIRES: one with a point.
inline Box boxOf(const Polygon& polygon) {
  const Point first = polygon.rings.front().front();
  Box box{first.x, first.y, first.x, first.y};
  forEachSide(polygon, [&](Point at, Point) { box = box.with({at.x, at.y, at.x, at.y}); });
  return box;
}

// The rings of all of them, as of one.
inline Polygon ringsOf(const std::vector<Polygon>& polygons) {
  Polygon rings;
  for (const Polygon& polygon : polygons) {
    rings.rings.insert(rings.rings.end(), polygon.rings.begin(), polygon.rings.end());
  }
  return rings;
}

// REQUIRES: at least one.
inline Box boxOfAll(const std::vector<Polygon>& polygons) {
  Box box = boxOf(polygons.front());
  for (const Polygon& polygon : polygons) box = box.with(boxOf(polygon));
  return box;
}

// Where on the outline or around a hole the point is nearest to.
inline Point nearestOnRings(const Polygon& polygon, Point to) {
  Point best = to;
  double least = HUGE_VAL;
  forEachSide(polygon, [&](Point a, Point b) {
    const Point at = nearestOn(a, b, to);
    const double away = apart(at, to);
    if (away < least) {
      least = away;
      best = at;
    }
  });
  return best;
}

// By the even-odd rule; what lies on a side may count either way.
inline bool holds(const Polygon& polygon, Point point) {
  bool isIn = false;
  forEachSide(polygon, [&](Point a, Point b) {
    if ((a.y > point.y) == (b.y > point.y)) return;
    if (point.x < a.x + (b.x - a.x) * (point.y - a.y) / (b.y - a.y)) isIn = !isIn;
  });
  return isIn;
}

// The point itself where the polygon holds it, else the nearest one on its sides.
inline Point nearestIn(const Polygon& polygon, Point to) {
  return holds(polygon, to) ? to : nearestOnRings(polygon, to);
}

// Without the holes' part; never negative.
inline double areaOf(const Polygon& polygon) {
  double whole = 0;
  for (std::size_t i = 0; i < polygon.rings.size(); ++i) {
    const Line& ring = polygon.rings[i];
    double twice = 0;
    for (std::size_t k = 0; k < ring.size(); ++k) {
      twice += crossOf(ring[k] - ring[0], ring[(k + 1) % ring.size()] - ring[0]);
    }
    whole += (i == 0 ? 1 : -1) * std::abs(twice) / 2;
  }
  return std::max(whole, 0.0);
}

inline std::size_t cornersOf(const Polygon& polygon) {
  std::size_t corners = 0;
  for (const Line& ring : polygon.rings) corners += ring.size();
  return corners;
}

}  // namespace tern::imports
