#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// Orders places so that a walk over all of them, which starts at the first and may end anywhere,
/// is as short as can be. Exact: every order counts.
///
/// Ownership: keeps nothing.
/// Threads: any.
/// Fails: by the result: without places, with only one and past `mostPlaces` the tour is [0] and
/// its cost infinite.
///
///     const auto [tour, cost] = TernTSP::solve({{0, 1, 10}, {1, 0, 1}, {10, 1, 0}});
///     // tour 0, 1, 2; cost 2
class TERN_API TernTSP {
 public:
  /// Lengths in any unit, from the row's place to the column's. The diagonal is not read; a cell
  /// that a row lacks is 0.
  using Matrix = std::vector<std::vector<double>>;

  /// An order and what it costs.
  struct Result {
    /// Positions of the places, in visiting order.
    std::vector<std::size_t> tour;
    /// Length of the walk, without a way back; infinite when none was found.
    double cost = std::numeric_limits<double>::infinity();
  };

  /// The most places that `solve` takes. It needs (n + 2) * 2^(n + 1) bytes for n of them while it
  /// runs: 2.4 MB for 16, 46 MB for 20, 201 MB for 22.
  static constexpr std::size_t mostPlaces = 22;

  /// A length may be negative; one that is not a number or positively infinite is never taken while
  /// there is another way. Of equally short walks the one whose last place comes first in the
  /// matrix, and so on backwards. When lengths differ by direction, the way back through the walk
  /// weighs each leg as from the later place to the earlier, while the cost adds those of the walk.
  /// More places than `mostPlaces` are logged.
  static Result solve(const Matrix& lengths);

  /// Whether the place is none of the subset's.
  static bool notInt(std::uint32_t place, std::uint32_t subset) {
    return place > 31 || (subset >> place & 1U) == 0;
  }
  /// All sets of r out of the first n places (at most 32), those with the lowest places first: for
  /// 2 out of 3 these are 0b011, 0b101, 0b110.
  static std::vector<std::uint32_t> combinations(int r, int n);
  /// Appends the sets that add r of the places from `at` on to the given one.
  static void combination(std::uint32_t set, int at, int r, int n,
                          std::vector<std::uint32_t>& subsets);
};

}  // namespace tern
