// What stands in for a floor that has next to no drawing of its own, such as half a floor or one
// that is not drawn yet: the drawing of the floor of its building that is nearest in height.
//
// Ownership: borrows the venue's records. Threads: as readers of the venue. Fails: by null.
//
//   if (const TernMap* ghost = ghostOf(venue, mapId, around)) ...
#pragma once

#include <cstdint>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "tools/tern/picture/Geometry.hpp"

namespace tern::picture {

// The map of the nearest floor, of equally near ones the lower, whose drawing lies as that of the
// given map and shows something in that part, which is in map units; null without one.
const TernMap* ghostOf(const TernVenueData& venue, std::int64_t mapId, const Box& part);

}  // namespace tern::picture
