// Several venues at once: loading and joining them.
//
// Threads: any; what is joined are the venues of the process. Fails: by value.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tools/tern/VenueSource.hpp"

namespace tern::command {

// Every building of each venue, with each venue's own graph and the joined one.
Loaded<TernMultiActiveVenues> loadVenues(VenueSource& source,
                                         const std::vector<std::int64_t>& venueIds);
// Joins venues that have been loaded and waits for the graph.
std::shared_ptr<TernMultiActiveVenues> joinVenues(
    const std::vector<std::shared_ptr<TernActiveVenue>>& venues);

}  // namespace tern::command
