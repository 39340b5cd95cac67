// The tour solver word for word: for each size the list of all sets of that size, and a table with
// a row for each stop and a cell for each set, the start's among them. What the library's own is
// measured by, and what tests compare it with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "TernCoreKit/optimisation/TernTSP.hpp"

namespace tern::bench {

class LiteralTour {
 public:
  // REQUIRES: a square matrix of at most `TernTSP::mostStops` stops.
  explicit LiteralTour(const TernTSP::Matrix& lengths)
      : lengths_(lengths),
        count_(static_cast<std::uint32_t>(lengths.size())),
        memo_(count_, std::vector<double>(std::size_t{1} << count_, -1)) {
    for (std::uint32_t i = 0; i < count_; ++i) {
      for (std::uint32_t j = 0; j < count_; ++j) {
        if (i != j) memo_[j][1U << i | 1U << j] = lengths_[i][j];
      }
    }
    for (std::uint32_t size = 3; size <= count_; ++size) {
      for (const std::uint32_t set :
           TernTSP::combinations(static_cast<int>(size), static_cast<int>(count_))) {
        if (!TernTSP::notInt(0, set)) fill(set);
      }
    }
  }

  static TernTSP::Result solve(const TernTSP::Matrix& lengths) {
    if (lengths.empty()) return {{0}};
    const LiteralTour tour(lengths);
    return {tour.order(), tour.cost()};
  }

 private:
  void fill(std::uint32_t set) {
    for (std::uint32_t next = 1; next < count_; ++next) {
      if (TernTSP::notInt(next, set)) continue;
      const std::uint32_t without = set ^ 1U << next;
      double best = std::numeric_limits<double>::infinity();
      for (std::uint32_t end = 1; end < count_; ++end) {
        if (end == next || TernTSP::notInt(end, set)) continue;
        const double candidate = memo_[end][without] + lengths_[end][next];
        if (candidate < best) best = candidate;
      }
      memo_[next][set] = best;
    }
  }

  double cost() const {
    double cost = std::numeric_limits<double>::infinity();
    for (std::uint32_t end = 1; end < count_; ++end) {
      const double length = memo_[end][(1U << count_) - 1];
      if (length < cost) cost = length;
    }
    return cost;
  }

  std::vector<std::size_t> order() const {
    std::vector<std::size_t> list;
    std::uint32_t state = (1U << count_) - 1;
    std::uint32_t last = 0;  // 0: none yet
    const auto value = [&](std::uint32_t j) {
      return last == 0 ? memo_[j][state] : memo_[j][state] + memo_[j][1U << j | 1U << last];
    };
    for (std::uint32_t picks = 1; picks < count_; ++picks) {
      std::uint32_t best = 0;  // 0: none yet
      for (std::uint32_t j = 1; j < count_; ++j) {
        if (TernTSP::notInt(j, state)) continue;
        if (best == 0 || value(j) < value(best)) best = j;
      }
      list.push_back(best);
      state ^= 1U << best;
      last = best;
    }
    list.push_back(0);
    for (std::size_t k = 0; k < list.size() / 2; ++k) std::swap(list[k], list[list.size() - 1 - k]);
    return list;
  }

  const TernTSP::Matrix& lengths_;
  const std::uint32_t count_;
  std::vector<std::vector<double>> memo_;
};

}  // namespace tern::bench
