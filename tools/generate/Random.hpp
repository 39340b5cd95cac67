// A small pseudo-random stream in integer arithmetic only, so that it gives the same numbers with
// every compiler and on every machine (the standard library's distributions do not).
//
// A stream is named by a seed and up to two indices: what one floor draws never shifts another's.
// Threads: as a plain value.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace tern::generate {

class Random {
 public:
  explicit Random(std::uint64_t seed, std::uint64_t stream = 0, std::uint64_t subStream = 0)
      : state_(mixed(mixed(mixed(seed) + stream) + subStream)) {}

  std::uint64_t next() { return mixed(state_ += 0x9E3779B97F4A7C15U); }

  // A number from 0 to bound - 1; 0 for a bound below 1.
  int below(int bound) {
    if (bound < 1) return 0;
    return static_cast<int>((next() >> 32U) * static_cast<std::uint64_t>(bound) >> 32U);
  }

  // A number from least to most.
  int between(int least, int most) { return least + below(most - least + 1); }

  // An index into the weights, each as likely as its weight; 0 when no weight is above 0.
  template <class Weights>
  int pick(const Weights& weights) {
    int total = 0;
    for (int weight : weights) total += weight;
    int left = below(total);
    int index = 0;
    for (int weight : weights) {
      if (left < weight) return index;
      left -= weight;
      ++index;
    }
    return 0;
  }

  template <class Item>
  void shuffle(std::vector<Item>& items) {
    for (std::size_t i = items.size(); i > 1; --i) {
      std::swap(items[i - 1], items[static_cast<std::size_t>(below(static_cast<int>(i)))]);
    }
  }

 private:
  // The output step of splitmix64.
  static std::uint64_t mixed(std::uint64_t bits) {
    bits = (bits ^ bits >> 30U) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ bits >> 27U) * 0x94D049BB133111EBU;
    return bits ^ bits >> 31U;
  }

  std::uint64_t state_;
};

}  // namespace tern::generate
