#include "TernCoreKit/wayfinding/detail/WalkLengths.hpp"

#include "TernCoreKit/model/collections/TernMapCollection.hpp"

namespace tern::inline v5::detail {

WalkScales::WalkScales(const GridGraph& graph, const TernMapCollection* maps) {
  mapOf.reserve(graph.graph.nodeCount());
  for (Position node{0}; numberOf(node) < graph.graph.nodeCount(); ++node) {
    mapOf.push_back(graph.mapOf(node));
  }
  for (const MapFacts& facts : graph.facts.maps) {
    const auto map = maps != nullptr ? maps->getById(facts.mapId) : nullptr;
    mmPerUnit.push_back(map != nullptr ? static_cast<float>(map->mmPerPixel.number()) : 0.0F);
  }
  const Indexed<LinkIndex, float> lengths = graph.linkLengths();
  walks.reserve(lengths.size());
  for (LinkIndex i{0}; i < lengths.endIndex(); ++i) {
    const Position target = graph.graph.links[i].target;
    walks.push_back({lengths[i], target != noPosition ? mapOf[target] : MapIndex{0}});
  }
}

// Where the map changes, the segment ends with the node before.
void WalkLengths::measure(std::span<const Settled> settled) {
  if (settled.empty()) return;
  const Position start = settled.front().node;
  ways_[start] = {.map = scales_.mapOf[start]};
  for (const Settled& reached : settled.subspan(1)) {
    const WalkScales::Walk walk = scales_.walks[reached.link];
    Way way = ways_[reached.parent];
    if (way.map != walk.map) {
      way.closedMm = millimetres(way);
      way.closedDistance = way.distance;
      way.map = walk.map;
    }
    way.distance += walk.distance;
    ways_[reached.node] = way;
  }
}

}  // namespace tern::detail
