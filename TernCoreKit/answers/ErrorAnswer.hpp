/// @file
/// Answers that say why there is none, and what their messages are made of.
///
/// Ownership: plain values. Threads: free functions without state; call them from any thread.
/// Fails: never.
#pragma once

#include <string>
#include <string_view>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// The error as an answer shows it: {"error":{"code","message","description"}}.
TERN_API Value errorAnswer(const TernError& error);

/// The answer to a request that is not understood: error TN006 with one line that says what would
/// be right.
TERN_API Value refusal(std::string message);

/// What such a line repeats of a text: at most its first forty bytes, cut between two characters of
/// UTF-8, with "..." behind what was cut.
TERN_API std::string shortened(std::string_view text);

}  // namespace tern
