// What a grid is built of, and short ways to it for tests that need no drawing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/detail/GridNodes.hpp"
#include "tests/support/DrawnVenue.hpp"

namespace tern::test {

struct VenueLists {
  TernASGrid::Waypoints waypoints = {};
  TernASGrid::Paths paths = {};
  TernASGrid::PathTypes pathTypes = {};
  TernASGrid::Maps maps = {};
  TernASGrid::Buildings buildings = {};
  bool isForMultiVenue = false;

  std::shared_ptr<TernASGrid> makeGrid() const;
};

VenueLists listsOf(const DrawnVenue& venue);

// That many waypoints with the ids 1, 2, ... on map 1, one map unit apart along the x axis, and
// path type 1 of weight 1; no paths and no floors.
VenueLists rowOfWaypoints(std::size_t count);
// The same with a path between each waypoint and the next one.
VenueLists corridor(std::size_t count);

// The nodes behind a grid of these lists, with their graph.
std::unique_ptr<detail::GridNodes> builtNodes(const VenueLists& lists);

std::shared_ptr<TernPath> pathOver(const std::vector<std::int64_t>& waypointIds,
                                   std::int64_t pathTypeId = 1);

}  // namespace tern::test
