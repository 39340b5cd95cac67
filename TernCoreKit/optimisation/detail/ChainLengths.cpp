#include "TernCoreKit/optimisation/detail/ChainLengths.hpp"

#include <cstdint>

namespace tern::inline v5::detail {

namespace {

constexpr double unknownLength = -1;

}  // namespace

void ChainLengths::measure(Chain chain) {
  const std::size_t cells = chain.size() <= TernTSP::mostStops ? chain.size() : 0;
  tables_.costToPathGraph.assign(chain.size(), std::vector<double>(cells, unknownLength));
  for (std::size_t row = 0; row < cells; ++row) {
    createPathandDoCorrectionInOrder(chain.subspan(row));
    // What no other pass would change: the cells of other rows do not depend on this one's lengths.
    fillRow(chain, row, row);
  }
}

// Distances of a leg's nodes are those from the leg's own start; a node that the chain passes again
// keeps its first length.
void ChainLengths::createPathandDoCorrectionInOrder(Chain chain) {
  auto& lengths = tables_.intermediateDistanceFromStartNode;
  lengths.clear();
  for (std::size_t i = 1; i < chain.size(); ++i) {
    const auto* leg = tables_.dictOfTernPathPerFloor.firstSegment(chain[i - 1]->id.integer(),
                                                                  chain[i]->id.integer());
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

void ChainLengths::createGraph(Chain chain, std::size_t row) {
  tables_.costToPathGraph.resize(chain.size());
  for (auto& cells : tables_.costToPathGraph) cells.resize(chain.size(), unknownLength);
  for (std::size_t i = 0; i < chain.size(); ++i) fillRow(chain, i, row);
}

void ChainLengths::fillRow(Chain chain, std::size_t i, std::size_t row) {
  auto& matrix = tables_.costToPathGraph;
  matrix[i][i] = 0;
  for (std::size_t j = i + 1; j < chain.size(); ++j) {
    if (matrix[i][j] == unknownLength) matrix[i][j] = lengthBetween(chain, i, j, row);
    matrix[j][i] = matrix[i][j];
  }
}

double ChainLengths::lengthBetween(Chain chain, std::size_t from, std::size_t to,
                                   std::size_t row) const {
  const std::int64_t end = chain[to]->id.integer();
  const auto* leg = tables_.dictOfTernPathPerFloor.firstSegment(chain[from]->id.integer(), end);
  if (leg != nullptr) return leg->pixelDistance;
  const auto& lengths = tables_.intermediateDistanceFromStartNode;
  const auto along = from == row ? lengths.find(end) : lengths.end();
  return along != lengths.end() ? along->second : unknownLength;
}

}  // namespace tern::detail
