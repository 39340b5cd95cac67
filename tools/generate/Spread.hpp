// Deals a whole number out to takers in turn, each by its weight, so that the parts sum to the
// whole.
//
// REQUIRES: the weights that are asked for sum to the total weight.
// Threads: one caller at a time.
#pragma once

#include <algorithm>
#include <cstdint>

namespace tern::generate {

class Spread {
 public:
  Spread(std::int64_t whole, std::int64_t totalWeight)
      : whole_(whole), totalWeight_(std::max<std::int64_t>(1, totalWeight)) {}

  int next(std::int64_t weight) {
    const std::int64_t before = whole_ * weightSoFar_ / totalWeight_;
    weightSoFar_ += weight;
    return static_cast<int>(whole_ * weightSoFar_ / totalWeight_ - before);
  }

 private:
  std::int64_t whole_;
  std::int64_t totalWeight_;
  std::int64_t weightSoFar_ = 0;
};

}  // namespace tern::generate
