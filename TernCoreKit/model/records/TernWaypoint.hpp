#pragma once

#include <cstddef>
#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

struct TernAssociation;

/// A node of the walking graph: a point of a map where paths meet.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernWaypoint : TernBaseModel {
  /// Number of the shop or room that it leads to, as text.
  Value unitNumber;
  /// Id of the map that it lies on.
  Value mapId;
  /// x and y in map units.
  Value coordinates;
  /// The destinations and amenities that are reached here.
  Nested<TernAssociation> associations;
  /// Code; passed on.
  Value status;
  /// Id of a zone of the venue; passed on.
  Value zoneId;

  /// x (axis 0) or y (axis 1) as stored; absent when there are fewer coordinates.
  const Value& coordinate(std::size_t axis) const;

  /// See TernBaseModel::initWithDictionary. "associations" becomes a TernAssociation.
  static std::shared_ptr<TernWaypoint> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Left out: `zoneId`.
  std::shared_ptr<TernWaypoint> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
