// A route from one venue into the next, told and drawn part by part.
//
// Positions of venues that are joined are longitudes and latitudes. So the route is cut where it
// enters another venue, and each part is laid on that venue's own maps.
//
// Ownership: shares the venues. Threads: as readers of the venues. Fails: never.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"

namespace tern::command {

// The part of a route that lies in one venue: segments as an answer has them, in map units, with
// sums from the start of the part.
struct VenueLeg {
  std::shared_ptr<TernActiveVenue> venue;
  Value segments;
};

// What no venue has is left out.
std::vector<VenueLeg> legsOf(const TernMultiActiveVenues& venues, const Value& segments);

}  // namespace tern::command
