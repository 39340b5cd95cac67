// A route from one venue into the next, told and drawn part by part.
//
// Positions of venues that are joined are longitudes and latitudes. So the route is cut where it
// enters another venue, and each part is laid on that venue's own maps.
//
// Ownership: shares the venues. Threads: as readers of the venues; the command one call
// at a time, as it searches the joined graph. Fails: the command by value.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/Outcome.hpp"

namespace tern::command {

// The part of a route that lies in one venue: segments as an answer has them, in map units, with
// sums from the start of the part.
struct VenueLeg {
  std::shared_ptr<TernActiveVenue> venue;
  Value segments;
};

// What no venue has is left out.
std::vector<VenueLeg> legsOf(const TernMultiActiveVenues& venues, const Value& segments);

// The command `route` among several venues.
Outcome answerJoinedRoute(const Arguments& call,
                          const std::shared_ptr<TernMultiActiveVenues>& venues);

}  // namespace tern::command
