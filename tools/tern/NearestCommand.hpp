// The command that finds the nearest destination, amenity or path type and the way there.
//
// Threads: one at a time, as it searches what the venue searches in. Fails: by value.
#pragma once

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/Outcome.hpp"

namespace tern::command {

// REQUIRES: the call's command is `nearest`; the venue's graph and trees are built.
Outcome answerNearest(const Arguments& call, const TernActiveVenue& venue);

}  // namespace tern::command
