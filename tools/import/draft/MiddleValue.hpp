// The value in the middle of several: one that is far off does not move it, as it would the mean.
//
// Threads: free functions. Fails: never.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tern::imports {

// The higher one of two in the middle. REQUIRES: at least one value, each a number.
inline double middleValue(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

}  // namespace tern::imports
