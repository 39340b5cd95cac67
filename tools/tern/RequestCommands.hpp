// The commands that ask one thing of a venue. With JSON their answer is that of the same request in
// a batch; for a person it is made of the same results.
//
// Threads: one at a time, as they search the venue's graph. Fails: by value.
#pragma once

#include <memory>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/Outcome.hpp"

namespace tern::command {

// REQUIRES: the call's command is `route`, `alternatives`, `tour`, `nearest`, `closest` or
// `convert`; the venue's graph and trees are built.
Outcome answerCall(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue);

}  // namespace tern::command
