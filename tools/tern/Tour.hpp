// The order in which to visit several destinations, with the way to each, as a request and as a
// command; and the bare ordering of places by their lengths.
//
// Threads: one call at a time, as they search the venue's graph. Fails: by value.
#pragma once

#include <memory>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/Outcome.hpp"
#include "tools/tern/RequestFields.hpp"

namespace tern::command {

// {"from", "destinations", "accessibility"} gives {"legs", "destinations"}; absent after a
// complaint.
Value tourAnswer(TernActiveVenue& venue, RequestFields& fields);

// {"matrix"} gives {"tour", "cost"}; absent after a complaint.
Value solveAnswer(TernActiveVenue& venue, RequestFields& fields);

// REQUIRES: the call's command is `tour`; the venue's graph and trees are built.
Outcome answerTour(const Arguments& call, const TernActiveVenue& venue);

}  // namespace tern::command
