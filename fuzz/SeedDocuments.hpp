// Small documents to begin with.
//
// Threads: any. Fails: a sample that cannot be read ends the process.
#pragma once

#include <string>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::fuzz {

// Two floors with lift and stairs, places and connectors, as {"venue", "buildings": {id:
// document}}.
Value smallVenue();
// A ring of ways on one floor.
Value ringVenue();
// The sample with the first few records of each list, and without drawings.
Value thinnedSample();
// Three waypoints in a row, of which the last is an exit to the other's first.
Value exitVenue(int id, int other);

// A request of each kind, for the small venue.
std::vector<Value> smallRequests();

}  // namespace tern::fuzz
