#pragma once

#include <cstddef>
#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern {

struct TernAssociation;

/// A node of the walking graph: a point of a map where paths meet.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
struct TERN_API TernWaypoint : TernBaseModel {
  Value unitNumber;
  /// Id of the map that it lies on.
  Value mapId;
  /// x and y in map units.
  Value coordinates;
  /// The destinations and amenities that are reached here.
  Nested<TernAssociation> associations;
  Value status;
  Value zoneId;

  /// x (axis 0) or y (axis 1) as stored; absent when there are fewer coordinates.
  const Value& coordinate(std::size_t axis) const;

  static std::shared_ptr<TernWaypoint> initWithDictionary(Value dictionary);
  std::shared_ptr<TernWaypoint> copyWithZone() const;
};

}  // namespace tern
