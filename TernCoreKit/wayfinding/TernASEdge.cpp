#include "TernCoreKit/wayfinding/TernASEdge.hpp"

#include <algorithm>
#include <utility>

namespace tern::inline v5 {

TernASEdge TernASEdge::initASEdge(Value edgeId, std::vector<std::int64_t> nodes, Value type,
                                  Value cost, Value acc, Value speed, Value direction) {
  return {std::move(edgeId), std::move(nodes), std::move(type),      std::move(cost),
          std::move(acc),    std::move(speed), std::move(direction), false};
}

bool TernASEdge::joins(std::int64_t nodeId) const {
  return std::ranges::find(nodes, nodeId) != nodes.end();
}

}  // namespace tern
