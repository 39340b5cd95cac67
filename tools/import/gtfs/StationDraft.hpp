// One station of a transit feed as a draft.
//
// Stops of all levels of one index lie on one floor. Two pathways that are each other's way back
// are one link, a fare gate and an exit gate between the same nodes too; escalators stay as they
// are.
//
// Threads: free functions. Fails: never: what cannot come through is told of.
#pragma once

#include <vector>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/gtfs/GtfsFeed.hpp"

namespace tern::imports {

// Places in the feed's lists.
struct StationParts {
  std::size_t station = 0;
  // All that belong to it, without itself.
  std::vector<std::size_t> stops;
  // Those that lead from one of these stops to another.
  std::vector<std::size_t> pathways;
  Oddities told;
};

// REQUIRES: at least one pathway.
Draft draftOf(const GtfsFeed& feed, const StationParts& parts);

}  // namespace tern::imports
