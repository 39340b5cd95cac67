// Several venues at once: loading and joining them, and routes from one into the next, as requests
// and as the command.
//
// The joined graph's positions are longitudes and latitudes. For a person a route is cut where it
// enters another venue, and each part is told and drawn on that venue's own maps.
//
// Threads: one call at a time, as they search the joined graph. Fails: by value.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/Outcome.hpp"
#include "tools/tern/VenueSource.hpp"

namespace tern::command {

// Every building of each venue, with each venue's own graph and the joined one.
Loaded<TernMultiActiveVenues> loadVenues(VenueSource& source,
                                         const std::vector<std::int64_t>& venueIds);
// Joins venues that have been loaded and waits for the graph.
std::shared_ptr<TernMultiActiveVenues> joinVenues(
    const std::vector<std::shared_ptr<TernActiveVenue>>& venues);

// Empty when there is no route.
TernRoute findRoute(const TernMultiActiveVenues& venues, std::int64_t from, std::int64_t to,
                    std::int64_t level);

// The part of a route that lies in one venue, on the venue's maps: in map units, with sums from the
// start of the part.
struct VenueLeg {
  std::shared_ptr<TernActiveVenue> venue;
  TernRoute route;
};

std::vector<VenueLeg> legsOf(const TernMultiActiveVenues& venues, const TernRoute& route);

// REQUIRES: the call's command is `route`.
Outcome answerJoinedRoute(const Arguments& call,
                          const std::shared_ptr<TernMultiActiveVenues>& venues);

}  // namespace tern::command
