// Comparing texts in any case.
//
// Ownership: values. Threads: any. Fails: never; bytes that are no UTF-8 stay as they are.
#pragma once

#include <string>
#include <string_view>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5::detail {

// The text with each letter in its simple lower-case form, letter by letter and in every process
// locale: a form may take more or fewer bytes, and what several letters become together is not
// looked at.
std::string lowered(std::string_view text);

// Whether both are texts that differ at most in case.
bool sameTextInAnyCase(const Value& a, const Value& b);

}  // namespace tern::detail
