// Comparing texts in any case.
//
// Ownership: values. Threads: any. Fails: never; bytes that are no UTF-8 stay as they are.
#pragma once

#include <string>
#include <string_view>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5::detail {

// The text with its Latin, Greek, Cyrillic and Armenian letters small, in every process locale.
std::string lowered(std::string_view text);

// Whether both are texts that differ at most in case.
bool sameTextInAnyCase(const Value& a, const Value& b);

}  // namespace tern::detail
