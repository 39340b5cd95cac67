// The picture of how far one gets: the links that are walked to what an answer says is reached.
//
// Threads: as one search, whose scores the grid's nodes show afterwards. Fails: never; a waypoint
// that no search comes to has no link.
#pragma once

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/picture/ReachPicture.hpp"

namespace tern::command {

// Of an answer to "reach". REQUIRES: a graph.
picture::ReachPicture reachPictureOf(const TernActiveVenue& venue, const Value& request,
                                     const Value& answer);

}  // namespace tern::command
