// How high a floor lies of which a network says the storey: the `floor` of networks after the older
// guidelines, where 1 is the ground floor as in Japan, and so is 0, which is outdoors.
//
//   ordinalOfStorey(Value("B2"));   // -2
//   ordinalOfStorey(Value("3F"));   // 2
//   ordinalOfStorey(Value("M2"));   // 0.5, between the first and the second
//   ordinalOfStorey(Value(1.5));    // 0.5
//
// Threads: free functions. Fails: by value.
#pragma once

#include <optional>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::imports {

// Some files have numbers as texts; none for what is no finite number.
std::optional<double> numberOf(const Value& value);

std::optional<double> ordinalOfStorey(const Value& storey);

}  // namespace tern::imports
