// Several venues at once.
//
// Threads: any; what is joined are the venues of the process. Fails: by value.
#pragma once

#include <cstdint>
#include <vector>

#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tools/tern/VenueSource.hpp"

namespace tern::command {

// Every building of each venue, with each venue's own graph and the joined one.
Loaded<TernMultiActiveVenues> loadVenues(VenueSource& source,
                                         const std::vector<std::int64_t>& venueIds);

}  // namespace tern::command
