#include "tools/import/ways/Shapes.hpp"

#include <geos_c.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <concepts>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

constexpr int segmentsOfQuarter = 8;
constexpr double mitreLimit = 5;
// What lies so near to the line between its neighbours is no corner.
constexpr double flatMetres = 1e-6;
// Smaller is what rounding left.
constexpr double leastSquareMetres = 1e-6;

// What GEOS calls by: one for every operation, so that threads have nothing in common.
class Geos {
 public:
  struct Destroy {
    GEOSContextHandle_t context;
    void operator()(GEOSGeometry* shape) const { GEOSGeom_destroy_r(context, shape); }
  };
  using Shape = std::unique_ptr<GEOSGeometry, Destroy>;

  Geos() : context_(GEOS_init_r()) {}
  Geos(const Geos&) = delete;
  Geos& operator=(const Geos&) = delete;
  ~Geos() { GEOS_finish_r(context_); }

  // Null gives null.
  Shape own(GEOSGeometry* geometry) const { return {geometry, Destroy{context_}}; }

  Shape shapeOf(const Shapes& shapes) const {
    std::vector<GEOSGeometry*> polygons;
    for (const Polygon& polygon : shapes) {
      GEOSGeometry* const made = polygonOf(polygon);
      if (made != nullptr) polygons.push_back(made);
    }
    return own(GEOSGeom_createCollection_r(context_, GEOS_MULTIPOLYGON, polygons.data(),
                                           static_cast<unsigned>(polygons.size())));
  }

  Shapes shapesOf(const Shape& geometry) const {
    Shapes shapes;
    if (geometry) addPolygons(geometry.get(), shapes);
    return shapes;
  }

  GEOSContextHandle_t context() const { return context_; }

 private:
  GEOSGeometry* ringOf(const Line& line) const {
    constexpr std::size_t least = 3;
    const bool isFinite = std::ranges::all_of(
        line, [](Point at) { return std::isfinite(at.x) && std::isfinite(at.y); });
    if (line.size() < least || !isFinite) return nullptr;
    const auto size = static_cast<unsigned>(line.size());
    GEOSCoordSequence* const points = GEOSCoordSeq_create_r(context_, size + 1, 2);
    for (unsigned i = 0; i <= size; ++i) {
      const Point at = line[i % size];
      GEOSCoordSeq_setXY_r(context_, points, i, at.x, at.y);
    }
    return GEOSGeom_createLinearRing_r(context_, points);
  }

  GEOSGeometry* polygonOf(const Polygon& polygon) const {
    if (polygon.rings.empty()) return nullptr;
    GEOSGeometry* const outline = ringOf(polygon.rings.front());
    if (outline == nullptr) return nullptr;
    std::vector<GEOSGeometry*> holes;
    for (std::size_t i = 1; i < polygon.rings.size(); ++i) {
      GEOSGeometry* const hole = ringOf(polygon.rings[i]);
      if (hole != nullptr) holes.push_back(hole);
    }
    return GEOSGeom_createPolygon_r(context_, outline, holes.data(),
                                    static_cast<unsigned>(holes.size()));
  }

  Line lineOf(const GEOSGeometry* ring) const {
    Line line;
    const GEOSCoordSequence* const points = GEOSGeom_getCoordSeq_r(context_, ring);
    unsigned size = 0;
    if (points != nullptr) GEOSCoordSeq_getSize_r(context_, points, &size);
    for (unsigned i = 0; i + 1 < size; ++i) {
      Point at;
      GEOSCoordSeq_getXY_r(context_, points, i, &at.x, &at.y);
      line.push_back(at);
    }
    return line;
  }

  void addPolygons(const GEOSGeometry* geometry, Shapes& shapes) const {
    if (GEOSGeomTypeId_r(context_, geometry) != GEOS_POLYGON) {
      const int parts = GEOSGetNumGeometries_r(context_, geometry);
      for (int i = 0; i < parts; ++i) {
        const GEOSGeometry* const part = GEOSGetGeometryN_r(context_, geometry, i);
        if (part != nullptr && part != geometry) addPolygons(part, shapes);
      }
      return;
    }
    if (GEOSisEmpty_r(context_, geometry) != 0) return;
    Polygon polygon;
    addRing(GEOSGetExteriorRing_r(context_, geometry), true, polygon);
    if (polygon.rings.empty()) return;
    const int holes = GEOSGetNumInteriorRings_r(context_, geometry);
    for (int i = 0; i < holes; ++i) {
      addRing(GEOSGetInteriorRingN_r(context_, geometry, i), false, polygon);
    }
    if (areaOf(polygon) > leastSquareMetres) shapes.push_back(std::move(polygon));
  }

  void addRing(const GEOSGeometry* ring, bool isOutline, Polygon& polygon) const {
    constexpr std::size_t least = 3;
    Line line = withoutFlatPoints(lineOf(ring));
    if (line.size() < least) return;
    double twice = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
      twice += crossOf(line[i] - line[0], line[(i + 1) % line.size()] - line[0]);
    }
    if ((twice > 0) != isOutline) std::ranges::reverse(line);
    polygon.rings.push_back(std::move(line));
  }

  static bool isFlat(Point before, Point at, Point after) {
    return apart(nearestOn(before, after, at), at) < flatMetres;
  }

  static Line withoutFlatPoints(const Line& line) {
    Line kept;
    for (std::size_t i = 0; i < line.size(); ++i) {
      const Point before = kept.empty() ? line.back() : kept.back();
      if (!isFlat(before, line[i], line[(i + 1) % line.size()])) kept.push_back(line[i]);
    }
    return kept;
  }

  GEOSContextHandle_t context_;
};

// None where GEOS gives up, as it does on edges that cross.
template <class Operation>
std::optional<Shapes> attempted(Operation operation, const std::same_as<Shapes> auto&... operands) {
  const Geos geos;
  const std::array shapes{geos.shapeOf(operands)...};
  const auto isMade = [](const Geos::Shape& shape) { return shape != nullptr; };
  if (!std::ranges::all_of(shapes, isMade)) return std::nullopt;
  const auto apply = [&](const auto&... shape) {
    return operation(geos.context(), shape.get()...);
  };
  const Geos::Shape result = geos.own(std::apply(apply, shapes));
  return result ? std::optional(geos.shapesOf(result)) : std::nullopt;
}

// What was put together by rounding may cross itself somewhere.
template <class Operation>
Shapes computed(Operation operation, const std::same_as<Shapes> auto&... operands) {
  if (auto shapes = attempted(operation, operands...)) return std::move(*shapes);
  return attempted(operation, repaired(operands)...).value_or(Shapes());
}

}  // namespace

// Each for itself, since where two lie over each other both are meant.
Shapes repaired(const Shapes& shapes) {
  const Geos geos;
  std::vector<GEOSGeometry*> valid;
  for (const Polygon& polygon : shapes) {
    const Geos::Shape shape = geos.shapeOf({polygon});
    GEOSGeometry* const made = shape ? GEOSMakeValid_r(geos.context(), shape.get()) : nullptr;
    if (made != nullptr) valid.push_back(made);
  }
  const Geos::Shape all = geos.own(GEOSGeom_createCollection_r(
      geos.context(), GEOS_GEOMETRYCOLLECTION, valid.data(), static_cast<unsigned>(valid.size())));
  if (!all) return {};
  return geos.shapesOf(geos.own(GEOSUnaryUnion_r(geos.context(), all.get())));
}

Shapes widened(const Shapes& shapes, double metres) {
  const auto widen = [metres](auto context, auto shape) {
    return GEOSBufferWithStyle_r(context, shape, metres, segmentsOfQuarter, GEOSBUF_CAP_FLAT,
                                 GEOSBUF_JOIN_MITRE, mitreLimit);
  };
  return computed(widen, shapes);
}

Shapes shrunk(const Shapes& shapes, double metres) { return widened(shapes, -metres); }

Shapes joined(const Shapes& a, const Shapes& b) { return computed(GEOSUnion_r, a, b); }

Shapes cut(const Shapes& from, const Shapes& what) {
  return computed(GEOSDifference_r, from, what);
}

Shapes common(const Shapes& a, const Shapes& b) { return computed(GEOSIntersection_r, a, b); }

Shapes simplified(const Shapes& shapes, double metres) {
  const auto simplify = [metres](auto context, auto shape) {
    return GEOSTopologyPreserveSimplify_r(context, shape, metres);
  };
  return computed(simplify, shapes);
}

}  // namespace tern::imports
