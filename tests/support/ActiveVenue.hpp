// Drawn venues as a hub loads them.
//
//   const auto venue = loadDrawnVenue({.floors = {{.lines = {"A-B"}}}, .paths = {"A-B"}});
//   EXPECT_EQ(lettersOf(venue->wayfind(waypointAt(*venue, 'A'), waypointAt(*venue, 'B'), 0)),
//   "AB");
//
// Ownership: shared. Threads: any. Fails: as `drawVenue`.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tests/support/DrawnVenue.hpp"

namespace tern::test {

// The venue of these documents, its waypoints attached, without a graph and a tree.
std::shared_ptr<TernActiveVenue> assembleVenue(Value document, Value building);
std::shared_ptr<TernActiveVenue> assembleVenue(const Drawing& drawing);
// The floors, by their places in the drawing, in buildings 1, 2, ...
std::shared_ptr<TernActiveVenue> assembleVenue(
    const Drawing& drawing, const std::vector<std::vector<std::size_t>>& floorsOfBuildings);

// With both.
std::shared_ptr<TernActiveVenue> loadVenue(Value document, Value building);
std::shared_ptr<TernActiveVenue> loadDrawnVenue(const Drawing& drawing);

// Null when nothing is drawn there.
std::shared_ptr<TernWaypoint> waypointAt(const TernActiveVenue& venue, char letter);

}  // namespace tern::test
