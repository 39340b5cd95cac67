// The commands about the data as a whole: which venues there are, and what one of them holds.
//
// Threads: as readers of the venue. Fails: never; the counts of what is missing are 0.
#pragma once

#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/Outcome.hpp"

namespace tern::command {

Answer listVenues(const TernVenueCollection& venues, bool json);

// REQUIRES: the venue's graph is built.
Answer describeVenue(const TernActiveVenue& venue, bool json);

}  // namespace tern::command
