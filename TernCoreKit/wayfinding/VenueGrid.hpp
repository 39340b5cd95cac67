#pragma once

#include <memory>
#include <span>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::inline v5 {

/// The records that a graph is made of.
struct VenueGridLists {
  /// Of every map.
  TernASGrid::Waypoints waypoints;
  /// Of every map.
  TernASGrid::Paths paths;
  /// Of every venue.
  TernASGrid::PathTypes pathTypes;
  /// Of every venue.
  TernASGrid::Maps maps;
  /// Of every venue.
  TernASGrid::Buildings buildings;
};

/// The records of one venue, or of several that are joined: one venue's behind the other's. What a
/// venue lacks, the lists lack. REQUIRES: none of the venues is null; the caller holds each one's
/// `recordsMutex`.
TERN_API VenueGridLists listRecords(std::span<const TernVenueData* const> venues);

/// The graph of the records, which it shares. See `TernASGrid::initASGrid` for what
/// `isForMultiVenue` changes. Threads: any, also while the venues are changed.
TERN_API std::shared_ptr<TernASGrid> makeGrid(VenueGridLists lists, bool isForMultiVenue);

}  // namespace tern
