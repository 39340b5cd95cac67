#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// Orders stops so that a walk over all of them, which starts at the first and may end anywhere,
/// is as short as can be. Exact: every order counts.
///
/// Ownership: keeps nothing.
/// Threads: any.
/// Fails: by the result: without stops, with only one, past `mostStops` and where memory runs out
/// the tour is [0], or empty where there is no memory for that either, and its cost infinite.
///
///     const auto [tour, cost] = TernTSP::solve({{0, 1, 10}, {1, 0, 1}, {10, 1, 0}});
///     // tour 0, 1, 2; cost 2
class TERN_API TernTSP {
 public:
  /// Lengths in any unit, from the row's stop to the column's. The diagonal is not read; a cell
  /// that a row lacks is 0.
  using Matrix = std::vector<std::vector<double>>;

  /// An order and what it costs.
  struct Result {
    /// Positions of the stops, in visiting order.
    std::vector<std::size_t> tour;
    /// Length of the walk, without a way back; infinite when none was found.
    double cost = std::numeric_limits<double>::infinity();
  };

  /// The most stops that `solve` takes. It needs (n + 2) * 2^(n + 1) bytes for n of them while it
  /// runs: 2.4 MB for 16, 46 MB for 20, 201 MB for 22.
  static constexpr std::size_t mostStops = 22;

  /// A length may be negative; one that is not a number or positively infinite is never taken while
  /// there is another way. Of equally short walks the one whose last stop comes first in the
  /// matrix, and so on backwards. When lengths differ by direction, the way back through the walk
  /// weighs each leg as from the later stop to the earlier, while the cost adds those of the walk.
  /// More stops than `mostStops` are logged.
  static Result solve(const Matrix& lengths);

  /// Whether the stop is none of the subset's.
  static bool notInt(std::uint32_t stop, std::uint32_t subset) {
    return stop > 31 || (subset >> stop & 1U) == 0;
  }
  /// All sets of r out of the first n stops (at most 32), those with the lowest stops first: for
  /// 2 out of 3 these are 0b011, 0b101, 0b110.
  static std::vector<std::uint32_t> combinations(int r, int n);
  /// Appends the sets that add r of the stops from `at` on to the given one.
  static void combination(std::uint32_t set, int at, int r, int n,
                          std::vector<std::uint32_t>& subsets);
};

}  // namespace tern
