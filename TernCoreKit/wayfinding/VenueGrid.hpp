// The graph of one venue, or of several that are joined.
//
// Ownership: the graph shares the venues' records. Threads: as readers of the venues.
// Fails: never; what a venue lacks, its graph lacks.
#pragma once

#include <memory>
#include <span>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern {

// Of the venues' records, one venue's behind the other's. See `TernASGrid::initASGrid` for what
// `isForMultiVenue` changes.
// REQUIRES: none of the venues is null.
TERN_API std::shared_ptr<TernASGrid> makeGrid(std::span<const TernVenueData* const> venues,
                                              bool isForMultiVenue);

}  // namespace tern
