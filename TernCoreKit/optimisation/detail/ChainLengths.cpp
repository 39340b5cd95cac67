#include "TernCoreKit/optimisation/detail/ChainLengths.hpp"

namespace tern::inline v5::detail {

namespace {

constexpr double unknownLength = -1;

}  // namespace

const TernTSP::Matrix& ChainLengths::measure(Chain chain) {
  const std::size_t cells = chain.size() <= TernTSP::mostStops ? chain.size() : 0;
  costToPathGraph_.assign(chain.size(), std::vector<double>(cells, 0));
  for (std::size_t row = 0; row < cells; ++row) {
    createPathandDoCorrectionInOrder(chain.subspan(row));
    createGraph(chain, row);
  }
  return costToPathGraph_;
}

// Distances of a leg's nodes are those from the leg's own start; a node that the chain passes again
// keeps its first length.
void ChainLengths::createPathandDoCorrectionInOrder(Chain chain) {
  auto& lengths = intermediateDistanceFromStartNode_;
  lengths.clear();
  for (std::size_t i = 1; i < chain.size(); ++i) {
    const auto* leg = legs_.firstSegment(chain[i - 1]->id.integer(), chain[i]->id.integer());
    if (leg == nullptr) continue;
    for (std::size_t p = 1; p < leg->points.size(); ++p) {
      const TernASNode& before = leg->points[p - 1];
      const auto base = lengths.find(before.nodeId());
      const float step = leg->points[p].distance().value_or(0) - before.distance().value_or(0);
      lengths.try_emplace(leg->points[p].nodeId(),
                          (base != lengths.end() ? base->second : 0.0F) + step);
    }
  }
}

// What no later pass would change: a row's cells depend on its own stop alone.
void ChainLengths::createGraph(Chain chain, std::size_t row) {
  for (std::size_t column = row + 1; column < chain.size(); ++column) {
    costToPathGraph_[row][column] =
        lengthBetween(chain[row]->id.integer(), chain[column]->id.integer());
    costToPathGraph_[column][row] = costToPathGraph_[row][column];
  }
}

double ChainLengths::lengthBetween(std::int64_t from, std::int64_t to) const {
  if (const auto* leg = legs_.firstSegment(from, to)) return leg->pixelDistance;
  const auto along = intermediateDistanceFromStartNode_.find(to);
  return along != intermediateDistanceFromStartNode_.end() ? along->second : unknownLength;
}

}  // namespace tern::detail
