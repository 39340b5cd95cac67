#include "TernCoreKit/wayfinding/detail/WalkLengths.hpp"

#include "TernCoreKit/model/collections/TernMapCollection.hpp"

namespace tern::inline v5::detail {

WalkScales::WalkScales(const GridGraph& graph, const TernMapCollection* maps)
    : linkLengths(graph.linkLengths()) {
  mapOf.reserve(graph.graph.nodeCount());
  for (Position node{0}; numberOf(node) < graph.graph.nodeCount(); ++node) {
    mapOf.push_back(graph.mapOf(node));
  }
  for (const MapFacts& facts : graph.facts.maps) {
    const auto map = maps != nullptr ? maps->getById(facts.mapId) : nullptr;
    mmPerUnit.push_back(map != nullptr ? static_cast<float>(map->mmPerPixel.number()) : 0.0F);
  }
}

void WalkLengths::begin() {
  ++search_;
  if (search_ != 0) return;
  for (Way& way : ways_) way.search = 0;
  search_ = 1;
}

float WalkLengths::millimetres(const Way& way, Position node) const {
  return way.closedMm +
         (way.distance - way.closedDistance) * scales_.mmPerUnit[scales_.mapOf[node]];
}

// Where the map changes, the segment ends with the node before.
WalkLengths::Way WalkLengths::onward(const SearchState& state, Way way, Position from,
                                     Position to) const {
  if (scales_.mapOf[from] != scales_.mapOf[to]) {
    way.closedMm = millimetres(way, from);
    way.closedDistance = way.distance;
  }
  way.distance += scales_.linkLengths[state.nodes[to].link];
  return way;
}

float WalkLengths::millimetresTo(const SearchState& state, Position end) {
  Position at = end;
  unmeasured_.clear();
  while (ways_[at].search != search_ && state.isVisited(at)) {
    unmeasured_.push_back(at);
    at = state.nodes[at].parent;
  }
  if (ways_[at].search != search_) ways_[at] = {.search = search_};
  Way way = ways_[at];
  for (std::size_t i = unmeasured_.size(); i > 0; --i) {
    const Position next = unmeasured_[i - 1];
    way = onward(state, way, at, next);
    ways_[next] = way;
    at = next;
  }
  return millimetres(way, end);
}

}  // namespace tern::detail
