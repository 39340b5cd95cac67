// How far it is between the stops of one floor, measured along a chain that visits them all: the
// matrix that the tour solver is given.
//
// From one stop to another it is as far as their own leg where one is stored, else as far as along
// the chain. Where the chain has a gap it is -1, and the solver takes that for a length. The way
// back is as far as the way there.
//
// Ownership: borrows the tables. Threads: one. Fails: never.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "TernCoreKit/optimisation/detail/TourTables.hpp"

namespace tern::inline v5::detail {

class ChainLengths {
 public:
  using Chain = std::span<const std::shared_ptr<TernWaypoint>>;

  explicit ChainLengths(TourTables& tables) : tables_(tables) {}

  // Fills the tables' matrix, in map units. A chain of more than `TernTSP::mostStops` stops gets
  // rows without cells: the solver refuses it anyway.
  void measure(Chain chain);
  // Measures how far it is along the chain to each of its nodes.
  void createPathandDoCorrectionInOrder(Chain chain);
  // Fills what cells of the matrix are not known yet, those of one row by the lengths along the
  // chain too.
  void createGraph(Chain chain, std::size_t row);

 private:
  void fillRow(Chain chain, std::size_t i, std::size_t row);
  double lengthBetween(Chain chain, std::size_t from, std::size_t to, std::size_t row) const;

  TourTables& tables_;
};

}  // namespace tern::detail
