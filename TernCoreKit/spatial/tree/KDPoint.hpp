#pragma once

#include <cstddef>
#include <optional>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// The point of two doubles that most trees are made of.
///
/// Ownership and threads: a plain value. Fails: never; see `decode`.
struct KDPoint {
  /// In any unit.
  double x = 0;
  /// In the unit of x.
  double y = 0;

  /// How many axes a tree made from now on cycles through; one past the first is y again.
  /// Not to be changed while another thread makes a tree.
  TERN_API static std::size_t dimensions;
  /// Points that are equal lie at one place.
  static constexpr bool equalPointsCoincide = true;

  /// The coordinate on an axis: 0 is x, any other y.
  double kdDimension(std::size_t axis) const { return axis == 0 ? x : y; }
  /// The squared distance in the unit of the points.
  double squaredDistance(const KDPoint& to) const {
    return (to.x - x) * (to.x - x) + (to.y - y) * (to.y - y);
  }
  /// Whether both coordinates are equal.
  friend bool operator==(const KDPoint&, const KDPoint&) = default;

  /// A list of two numbers; one that JSON cannot hold is a text ("inf", "-inf", "nan").
  TERN_API Value encode() const;
  /// None for anything else.
  TERN_API static std::optional<KDPoint> decode(const Value& archived);
};

}  // namespace tern
