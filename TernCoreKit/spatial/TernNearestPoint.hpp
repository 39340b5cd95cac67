#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::inline v5 {

/// A waypoint as the nearest-element search keeps it in its trees: where it lies and for what it
/// stands.
///
/// Ownership: a value that shares its records. Threads: as a standard container. Fails: never.
struct TernNearestPoint {
  /// x and y.
  static constexpr std::size_t dimensions = 2;
  /// Points that are equal lie at one place.
  static constexpr bool equalPointsCoincide = true;

  /// Map units from the left.
  double x = 0;
  /// Map units from the top.
  double y = 0;
  /// Id of the map that it lies on.
  std::optional<std::int64_t> z;
  /// What is reached there; null for the spot that a search starts from.
  std::shared_ptr<TernBaseModel> element;
  /// Where it is reached; null for the spot that a search starts from.
  std::shared_ptr<TernWaypoint> waypoint;

  /// The coordinate on an axis: 0 is x, any other y.
  double kdDimension(std::size_t axis) const { return axis == 0 ? x : y; }
  /// The squared distance in map units.
  double squaredDistance(const TernNearestPoint& to) const {
    return (to.x - x) * (to.x - x) + (to.y - y) * (to.y - y);
  }
  /// The same element at the same waypoint: no start of a search equals what lies in a tree.
  friend bool operator==(const TernNearestPoint& a, const TernNearestPoint& b) {
    return a.element == b.element && a.waypoint == b.waypoint && a.x == b.x && a.y == b.y;
  }
};

}  // namespace tern
