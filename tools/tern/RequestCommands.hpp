// The commands that ask one thing of a venue. Each asks once: its JSON is that answer, the same as
// a batch gives, and its words and its picture are made of it.
//
// REQUIRES: the call's request is one of the command's; the venue's graph and trees are built.
// Threads: one at a time, as they search the venue's graph. Fails: by value.
#pragma once

#include <memory>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/Outcome.hpp"

namespace tern::command {

using RequestCommand = Outcome(const Arguments& call,
                               const std::shared_ptr<TernActiveVenue>& venue);

// Each is the one function of a file of that name, such as RouteCommand.cpp.
RequestCommand answerRoute, answerAlternatives, answerTour, answerNearest, answerClosest,
    answerConvert;

// In JoinedRouteCommand.cpp.
Outcome answerJoinedRoute(const Arguments& call,
                          const std::shared_ptr<TernMultiActiveVenues>& venues);

// By the call's command.
Outcome answerCall(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue);

}  // namespace tern::command
