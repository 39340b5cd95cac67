// Routes and links of the graph as the answers to requests show them.
//
// Threads: as the grid that they come from. Fails: never; a number that is absent shows as 0.
#pragma once

#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/wayfinding/TernNeighbor.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::command {

// [{"mapId", "mover", "cost", "pixelDistance", "mmDistance", "points", "mapPoints"}, ...]
Value routeAnswer(const TernRoute& route);

// {"id", "cost", "distance", "accessibility", "edge", "pathType"}
Value neighborAnswer(const TernNeighbor& neighbor);

}  // namespace tern::command
