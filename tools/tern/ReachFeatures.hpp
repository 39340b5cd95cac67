// How far one gets as features of GeoJSON: a LineString for each link whose ends are both reached,
// a Point for each start.
//
// Threads: as readers of the venue. Fails: as GeoFeatures.
#pragma once

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/GeoFeatures.hpp"

namespace tern::command {

// Of a request "reach" and its answer.
GeoFeatures featuresOfReach(const TernActiveVenue& venue, const Value& request,
                            const Value& answer);

}  // namespace tern::command
