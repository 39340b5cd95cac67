// The destinations of several venues, one entry for each venue. Its queries look into the entries'
// destinations and answer with entries.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/records/TernVenueDestination.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern {

class TERN_API VenueDestinationCollection {
 public:
  using Entries = std::vector<std::shared_ptr<TernVenueDestination>>;

  // REQUIRES: no entry is null.
  Entries items;

  static std::shared_ptr<VenueDestinationCollection> initWithItems(Entries items);

  const Entries& getAll() const { return items; }

  // The first entry of that venue, or with such a destination.
  std::shared_ptr<TernVenueDestination> getByVenueId(std::int64_t venueId) const;
  std::shared_ptr<TernVenueDestination> getByDestinationId(std::int64_t destinationId) const;
  std::shared_ptr<TernVenueDestination> getByDestinationMapId(std::int64_t mapId) const;
  std::shared_ptr<TernVenueDestination> getByDestinationWaypointId(std::int64_t waypointId) const;
  std::shared_ptr<TernVenueDestination> getByDestinationUnitNumber(const Value& unitNumber) const;

  // Each entry once for each of its destinations that matches.
  Entries getByDestinationName(const Value& name) const;
  Entries getByDestinationTag(const Value& tag) const;
  Entries getByDestinationKeyword(const Value& keyword) const;

  // Every entry, whatever the argument: an entry counts when its destinations answer with a list,
  // and they always do.
  Entries getByDestinationExternalId(const Value& externalId) const;
};

}  // namespace tern
