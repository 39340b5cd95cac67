// Loads venues strictly one after another. Each load begins on the background queue, which is free
// again while the load waits for the service.
//
// Ownership: what is under way keeps itself. Threads: any; `finish` runs on the background queue.
// Fails: as `load` does; one that never completes ends the row without `finish`.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace tern {

struct TernActiveVenue;

}  // namespace tern

namespace tern::detail {

using LoadedVenues = std::vector<std::shared_ptr<TernActiveVenue>>;
// Null for a venue that is to be left out. Called once.
using VenueLoaded = std::function<void(std::shared_ptr<TernActiveVenue>)>;

void loadInTurn(std::vector<std::int64_t> venueIds,
                std::function<void(std::int64_t venueId, VenueLoaded)> load,
                std::function<void(LoadedVenues)> finish);

}  // namespace tern::detail
