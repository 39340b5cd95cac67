// Removes keys that a map of a document gives more than once.
#pragma once

#include <cstddef>
#include <span>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

// Leaves each key of a map once, in its first place and with its last value, and returns how many
// values of the span are left; those behind them are absent. Every second value is a key (a text),
// the one behind it its value. Linear unless many keys are repeated, n log n at worst.
std::size_t removeRepeatedKeys(std::span<Value> keysAndValues);

}  // namespace tern
