#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// Where a destination, an amenity or a path type is placed.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernLocation {
  /// Id of the map on which it lies.
  Value mapId;
  /// List of the ids of the waypoints that reach it on that map.
  Value waypointIds;

  /// See TernBaseModel::initWithDictionary. No field becomes anything else.
  static std::shared_ptr<TernLocation> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Every field is copied.
  std::shared_ptr<TernLocation> copyWithZone() const;

  /// The locations under the key "locations" of a destination's, amenity's or path type's whole
  /// document, one for each element and in their order; empty without the key or when it is null. A
  /// value that is no list is logged and gives none.
  static std::vector<std::shared_ptr<TernLocation>> parseLocationsIntoArrayFormDictionary(
      Value dictionary);
};

}  // namespace tern
