// What the modes and measures of a pathway mean.
//
// Threads: free functions. Fails: never.
#pragma once

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/draft/Draft.hpp"
#include "tools/import/gtfs/GtfsFeed.hpp"

namespace tern::imports {

struct PathwayEnds {
  bool changeFloor = false;
  // Whether a wheelchair is told not to go to one of them.
  bool areBarred = false;
};

LinkKind kindOf(const GtfsPathway& way, PathwayEnds ends);
bool climbs(PathwayMode mode);
bool isGate(PathwayMode mode);
// Steeper than what a ramp may be.
bool isSteep(const GtfsPathway& way);
// 1 for what leads up, -1 for what leads down, 0 where the pathway does not say.
int riseOf(const GtfsPathway& pathway);
// What is drawn of it, also where it does not say how long it is.
double metresOf(const GtfsPathway& pathway);
Value detailsOf(const GtfsPathway& way);

}  // namespace tern::imports
