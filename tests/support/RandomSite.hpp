// Makes small well-made venues out of a tape of random bytes, loaded as a hub loads them: several
// buildings whose floors share levels or lack one, connectors that lead somewhere or nowhere,
// one-ways, links of every accessibility, and destinations here and there. See RandomVenue.hpp for
// tapes and for venues that are absurd.
//
// Ownership: shared. Threads: any. Fails: never.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tests/support/RandomVenue.hpp"

namespace tern::test {

// With its graph and trees.
std::shared_ptr<TernActiveVenue> randomSite(Tape& tape);

// One of its waypoints.
std::shared_ptr<TernWaypoint> randomWaypoint(Tape& tape, const TernActiveVenue& venue);
// A level that makes a difference in it.
std::int64_t randomSiteLevel(Tape& tape);

}  // namespace tern::test
