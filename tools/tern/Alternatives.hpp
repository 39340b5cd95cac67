// A route with an alternative beside it, as a request and as a command.
//
// Threads: one call at a time, as they search the venue's graph. Fails: by value.
#pragma once

#include <cstdint>
#include <memory>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/Arguments.hpp"
#include "tools/tern/Outcome.hpp"

namespace tern {
struct TernActiveVenue;
}  // namespace tern

namespace tern::command {

// {"optimal", "alternatives"}, each null when there is none. The options are a map or absent.
Value alternativesAnswer(TernActiveVenue& venue, std::int64_t from, std::int64_t to,
                         std::int64_t level, const Value& options);

Outcome answerAlternatives(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue);

}  // namespace tern::command
