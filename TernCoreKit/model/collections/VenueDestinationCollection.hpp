#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/records/TernVenueDestination.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// The destinations of several venues, one entry for each venue. Its queries look into the entries'
/// destinations and answer with entries.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API VenueDestinationCollection {
 public:
  /// One entry for each venue.
  using Entries = std::vector<std::shared_ptr<TernVenueDestination>>;

  /// The entries in their order.
  /// REQUIRES: none is null.
  Entries items;

  /// A collection of these entries.
  static std::shared_ptr<VenueDestinationCollection> initWithItems(Entries items);

  /// The same as `items`.
  const Entries& getAll() const { return items; }

  /// The first entry of that venue.
  std::shared_ptr<TernVenueDestination> getByVenueId(std::int64_t venueId) const;
  /// The first entry with a destination of that id.
  std::shared_ptr<TernVenueDestination> getByDestinationId(std::int64_t destinationId) const;
  /// The first entry with a destination placed on that map.
  std::shared_ptr<TernVenueDestination> getByDestinationMapId(std::int64_t mapId) const;
  /// The first entry with a destination whose locations name that waypoint.
  std::shared_ptr<TernVenueDestination> getByDestinationWaypointId(std::int64_t waypointId) const;
  /// The first entry with a destination of that unit number.
  std::shared_ptr<TernVenueDestination> getByDestinationUnitNumber(const Value& unitNumber) const;

  /// Each entry once for each of its destinations of that name.
  Entries getByDestinationName(const Value& name) const;
  /// Each entry once for each of its destinations with that tag.
  Entries getByDestinationTag(const Value& tag) const;
  /// Each entry once for each of its destinations with that keyword.
  Entries getByDestinationKeyword(const Value& keyword) const;

  /// Every entry, whatever the argument: an entry counts when its destinations answer with a list,
  /// and they always do.
  Entries getByDestinationExternalId(const Value& externalId) const;
};

}  // namespace tern
