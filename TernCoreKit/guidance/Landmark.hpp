/// @file
/// What a place without a name of its own is called by: a place with one beside it.
///
/// Ownership: shares the record. Threads: any; holds the venue's `recordsMutex` meanwhile.
/// Fails: never.
#pragma once

#include <memory>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

struct TernDestination;
struct TernWaypoint;

/// How far a landmark may lie off, in metres: about as far as a shop's sign is read indoors. A map
/// without a scale has no bound.
inline constexpr double furthestLandmarkMetres = 30;

/// The destination with a name that is reached nearest to the waypoint, by straight line on the
/// waypoint's map; of equally near ones the first. Null when there is none within the bound. Looks
/// at every destination once.
TERN_API std::shared_ptr<TernDestination> landmarkNear(const TernVenueData& venue,
                                                       const TernWaypoint& waypoint);

}  // namespace tern
