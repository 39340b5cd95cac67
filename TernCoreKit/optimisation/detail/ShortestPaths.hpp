// The least lengths of the paths that begin at stop 0, for every set of stops that a path visits
// and every stop at which it may end.
//
// A set of n stops without the first is a number of n - 1 bits. Eight sets that differ only in
// their three lowest stops make a block, one cache line; whatever is done is done to a whole
// block, so that sums and comparisons are those of one set but run side by side. The rows, one for
// each end, leave out the bit of their own end, except those of the three lowest stops, which have
// no path (an infinite length) for the sets without it.
//
// A path ends at the lower of two stops that make it equally short; what is not a number is never
// shorter.
//
// Ownership: borrows nothing. Threads: any number of readers. Fails: never; memory is that of
// (n + 2) * 2^(n - 2) doubles.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "TernCoreKit/platform/detail/common/LargeMemory.hpp"

namespace tern::inline v5::detail {

class ShortestPaths {
 public:
  // Lengths by stop: [from][to].
  // REQUIRES: at least two stops, at most 31; as many rows, none of them shorter.
  explicit ShortestPaths(const std::vector<std::vector<double>>& lengths);

  // Of the paths over exactly the visited stops (bit i for stop i, with the start) that end
  // there. REQUIRES: `end` is not 0 and, like 0, visited.
  double length(std::size_t end, std::uint32_t visited) const;

 private:
  static constexpr std::size_t lowCount = 3;
  static constexpr std::size_t blockSize = std::size_t{1} << lowCount;
  static constexpr std::size_t mostEnds = 30;

  using Pair = double __attribute__((vector_size(16)));
  struct alignas(64) Block {
    std::array<Pair, blockSize / 2> pairs;

    double at(std::size_t set) const { return pairs[set / 2][set % 2]; }
    void put(std::size_t set, double length) { pairs[set / 2][set % 2] = length; }
  };
  // The last stop but one of a path: its lengths for the sets at hand.
  struct Source {
    const Block* block;
    std::size_t end;
  };
  using Column = std::array<double, mostEnds>;

  void readLengths(const std::vector<std::vector<double>>& lengths);
  Block& block(std::size_t end, std::size_t high) const;
  std::span<const Source> sourcesOf(std::size_t high, std::array<Source, mostEnds>& sources) const;
  static Block shortest(std::span<const Source> sources, const Column& toEnd);
  std::array<Block, lowCount> shortestToLowEnds(std::span<const Source> sources) const;
  void fillLowEnds(std::size_t high, std::span<const Source> highSources);
  void fillSuccessors(std::size_t high, std::span<const Source> sources);

  // Stops other than the start, and at least `lowCount`: more are infinitely far away.
  const std::size_t ends_;
  const std::size_t highSets_;
  Column fromStart_;
  // Lengths to an end, by the end before it.
  std::array<Column, mostEnds> to_;
  std::array<std::size_t, mostEnds> rows_;  // first block of each end
  std::unique_ptr<void, FreeLargeMemory> memory_;
};

}  // namespace tern::detail
