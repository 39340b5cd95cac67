/// @file
/// Puts a venue together from the answers in which a service gives it: first the venue's own
/// document, then one for each building.
///
/// Ownership: nothing is kept; documents are taken over and moved from.
/// Threads: one at a time on one venue, and none while a rebuild of it is under way.
/// Fails: never: what a document lacks, or has of the wrong kind, is left out.
///
///     auto venue = TernActiveVenue::initWithDictionary(std::move(venueDocument));
///     for (auto& [id, document] : buildingDocuments) addBuilding(*venue, id, std::move(document));
///     attachWaypoints(*venue);
#pragma once

#include <cstdint>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

struct TernActiveVenue;

/// Puts the building of that document among the venue's buildings and the maps of its floors among
/// the venue's maps. Its floors are marked with `buildingId`, whatever they say themselves. The
/// document's "defaultFloorId" becomes that of every building's floors, on purpose not only of its
/// own.
TERN_API void addBuilding(TernActiveVenue& venue, std::int64_t buildingId, Value answer);

/// Gives each amenity, destination and path type the waypoints that its locations name, as far as
/// they lie on loaded maps; one without any keeps what it has. Takes time linear in the ids named.
TERN_API void attachWaypoints(TernActiveVenue& venue);

}  // namespace tern
