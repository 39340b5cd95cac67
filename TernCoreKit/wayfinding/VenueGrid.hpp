#pragma once

#include <memory>
#include <span>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::inline v5 {

/// The graph of one venue, or of several that are joined: of the venues' records, one venue's
/// behind the other's. See `TernASGrid::initASGrid` for what `isForMultiVenue` changes. The graph
/// shares the records; what a venue lacks, it lacks. Threads: as readers of the venues. REQUIRES:
/// none of the venues is null.
TERN_API std::shared_ptr<TernASGrid> makeGrid(std::span<const TernVenueData* const> venues,
                                              bool isForMultiVenue);

}  // namespace tern
