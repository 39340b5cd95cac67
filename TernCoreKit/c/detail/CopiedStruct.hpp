// Copies a struct of C whose caller may have been compiled with an older or a newer header: what
// its struct lacks is 0, what this library does not know is passed over.
//
// Ownership: copies. Threads: any. Fails: by a Refusal when there is no struct, or none with a
// size.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include "TernCoreKit/c/detail/Guard.hpp"

namespace tern::inline v5::detail {

template <class Struct>
Struct copiedStruct(const Struct* given, std::string_view name) {
  static_assert(std::is_trivially_copyable_v<Struct>);
  if (given == nullptr) refuseArgument("the " + std::string(name) + " is NULL");
  if (given->size < sizeof given->size) {
    refuseArgument("the " + std::string(name) + " does not say its size");
  }
  Struct copy{};
  std::memcpy(&copy, given, std::min(given->size, sizeof copy));
  copy.size = sizeof copy;
  return copy;
}

}  // namespace tern::detail
