// Reads a plan as somebody would who walks by it, and tells more where they would go astray: where
// nothing is told and another way leads straighter on than the route, or about as straight.
//
// Ways are judged by where they lead within a glance. What cannot be told, such as the choice
// between ways that all lead straight on, is left.
//
// Threads: as readers of the graph. Fails: never.
#pragma once

#include <vector>

#include "TernCoreKit/guidance/detail/StepPlan.hpp"

namespace tern::inline v5::detail {

void tellWhereWaysMislead(std::vector<Decision>& plan, const WalkedRoute& route,
                          const TernASGrid& grid, MapPlaces& places);

}  // namespace tern::detail
