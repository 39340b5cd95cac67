// How far it is between the stops of one floor, measured along a chain that visits them all: the
// matrix that the tour solver is given.
//
// From one stop to another it is as far as their own leg where one is stored, else as far as along
// the chain. Where the chain has a gap it is -1, and the solver takes that for a length. The way
// back is as far as the way there.
//
// Ownership: borrows the legs. Threads: one. Fails: never.
#pragma once

#include <cstdint>
#include <span>
#include <unordered_map>

#include "TernCoreKit/optimisation/TernTSP.hpp"
#include "TernCoreKit/optimisation/detail/LegCache.hpp"
#include "TernCoreKit/optimisation/detail/TourTables.hpp"

namespace tern::inline v5::detail {

class ChainLengths {
 public:
  explicit ChainLengths(const LegCache& legs) : legs_(legs) {}

  // In map units. A chain of more than `TernTSP::mostStops` stops gets rows without cells: the
  // solver refuses it anyway.
  const TernTSP::Matrix& measure(std::span<const std::shared_ptr<TernWaypoint>> chain);

 private:
  using Chain = std::span<const std::shared_ptr<TernWaypoint>>;

  void createPathandDoCorrectionInOrder(Chain chain);
  void createGraph(Chain chain, std::size_t row);
  double lengthBetween(std::int64_t from, std::int64_t to) const;

  const LegCache& legs_;
  TernTSP::Matrix costToPathGraph_;
  // Node id to the length of the way there along the chain, from its head.
  std::unordered_map<std::int64_t, float> intermediateDistanceFromStartNode_;
};

}  // namespace tern::detail
