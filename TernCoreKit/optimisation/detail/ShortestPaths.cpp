#include "TernCoreKit/optimisation/detail/ShortestPaths.hpp"

#include <algorithm>
#include <bit>
#include <limits>

namespace tern::inline v5::detail {

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

// The set's number when nobody counts that bit.
std::size_t withoutBit(std::size_t set, std::size_t bit) {
  const std::size_t lower = (std::size_t{1} << bit) - 1;
  return (set & lower) | (set >> 1 & ~lower);
}

}  // namespace

ShortestPaths::ShortestPaths(const std::vector<std::vector<double>>& lengths)
    : ends_(std::max(lengths.size() - 1, lowCount)),
      highSets_(std::size_t{1} << (ends_ - lowCount)) {
  readLengths(lengths);
  std::size_t blocks = 0;
  for (std::size_t end = 0; end < ends_; ++end) {
    rows_[end] = blocks;
    // One block more than a power of two: rows of equal stops would push each other out of the
    // cache.
    blocks += (end < lowCount ? highSets_ : highSets_ / 2) + 1;
  }
  memory_ = largeMemory(blocks * sizeof(Block));
  std::array<Source, mostEnds> room;
  for (std::size_t high = 0; high < highSets_; ++high) {
    const auto sources = sourcesOf(high, room);
    fillLowEnds(high, sources.subspan(lowCount));
    fillSuccessors(high, sources);
  }
}

void ShortestPaths::readLengths(const std::vector<std::vector<double>>& lengths) {
  fromStart_.fill(infinite);
  for (Column& column : to_) column.fill(infinite);
  for (std::size_t end = 0; end + 1 < lengths.size(); ++end) {
    fromStart_[end] = lengths[0][end + 1];
    for (std::size_t before = 0; before + 1 < lengths.size(); ++before) {
      to_[end][before] = lengths[before + 1][end + 1];
    }
  }
}

ShortestPaths::Block& ShortestPaths::block(std::size_t end, std::size_t high) const {
  Block* row = static_cast<Block*>(memory_.get()) + rows_[end];
  return row[end < lowCount ? high : withoutBit(high, end - lowCount)];
}

double ShortestPaths::length(std::size_t end, std::uint32_t visited) const {
  const std::size_t set = visited >> 1;
  return block(end - 1, set >> lowCount).at(set % blockSize);
}

// The ends that a path over one of the block's sets may have: the low ones, in some of the sets,
// and the high ones of all of them.
std::span<const ShortestPaths::Source> ShortestPaths::sourcesOf(
    std::size_t high, std::array<Source, mostEnds>& sources) const {
  std::size_t count = 0;
  for (; count < lowCount; ++count) sources[count] = {&block(count, high), count};
  for (std::size_t rest = high; rest != 0; rest &= rest - 1) {
    const std::size_t end = lowCount + static_cast<std::size_t>(std::countr_zero(rest));
    sources[count++] = {&block(end, high), end};
  }
  return {sources.data(), count};
}

// For each set of a block, the least over the sources, the first of equal ones; infinite without.
ShortestPaths::Block ShortestPaths::shortest(std::span<const Source> sources, const Column& toEnd) {
  Pair a = {infinite, infinite};
  Pair b = a;
  Pair c = a;
  Pair d = a;
  const auto take = [](Pair sum, Pair& best) { best = sum < best ? sum : best; };
  for (const Source& source : sources) {
    const Pair leg = {toEnd[source.end], toEnd[source.end]};
    const auto& pairs = source.block->pairs;
    take(pairs[0] + leg, a);
    take(pairs[1] + leg, b);
    take(pairs[2] + leg, c);
    take(pairs[3] + leg, d);
  }
  return {{a, b, c, d}};
}

// The same for the low ends all at once, in the sets that lack the end.
std::array<ShortestPaths::Block, ShortestPaths::lowCount> ShortestPaths::shortestToLowEnds(
    std::span<const Source> sources) const {
  const Block none = shortest({}, fromStart_);
  std::array<Block, lowCount> best = {none, none, none};
  const auto take = [](Pair sum, Pair& least) { least = sum < least ? sum : least; };
  for (const auto& [block, end] : sources) {
    const auto& pairs = block->pairs;
    const Pair toFirst = {to_[0][end], to_[0][end]};
    take(pairs[0] + toFirst, best[0].pairs[0]);
    take(pairs[1] + toFirst, best[0].pairs[1]);
    take(pairs[2] + toFirst, best[0].pairs[2]);
    take(pairs[3] + toFirst, best[0].pairs[3]);
    const Pair toSecond = {to_[1][end], to_[1][end]};
    take(pairs[0] + toSecond, best[1].pairs[0]);
    take(pairs[2] + toSecond, best[1].pairs[2]);
    const Pair toThird = {to_[2][end], to_[2][end]};
    take(pairs[0] + toThird, best[2].pairs[0]);
    take(pairs[1] + toThird, best[2].pairs[1]);
  }
  return best;
}

// Within a block a set's low ends follow from smaller sets of the same block, so here one set comes
// after the other.
void ShortestPaths::fillLowEnds(std::size_t high, std::span<const Source> highSources) {
  std::array<Block*, lowCount> low;
  const std::array<Block, lowCount> overHigh = shortestToLowEnds(highSources);
  for (std::size_t end = 0; end < lowCount; ++end) {
    low[end] = &block(end, high);
    *low[end] = shortest({}, to_[end]);
  }
  for (std::size_t set = 1; set < blockSize; ++set) {
    for (std::size_t end = 0; end < lowCount; ++end) {
      const std::size_t before = set & ~(std::size_t{1} << end);
      if (before == set) continue;
      double best = infinite;
      const auto take = [&best](double sum) { best = sum < best ? sum : best; };
      for (std::size_t last = 0; last < lowCount; ++last) {
        take(low[last]->at(before) + to_[end][last]);
      }
      take(overHigh[end].at(before));
      low[end]->put(set, high == 0 && before == 0 ? fromStart_[end] : best);
    }
  }
}

// Every set of the block with each high stop that is not among them.
void ShortestPaths::fillSuccessors(std::size_t high, std::span<const Source> sources) {
  for (std::size_t rest = (highSets_ - 1) & ~high; rest != 0; rest &= rest - 1) {
    const std::size_t end = lowCount + static_cast<std::size_t>(std::countr_zero(rest));
    Block& longer = block(end, high);
    longer = shortest(sources, to_[end]);
    if (high == 0) longer.put(0, fromStart_[end]);
  }
}

}  // namespace tern::detail
