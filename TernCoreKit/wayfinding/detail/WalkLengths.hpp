// How long the ways are that a search of the whole graph has found, in millimetres that are walked.
//
// Ownership: borrows the scales. Threads: one; any number may share scales.
// Fails: never; a map that is unknown has the scale 0.
#pragma once

#include <span>

#include "TernCoreKit/wayfinding/detail/GraphSearch.hpp"
#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"

namespace tern::inline v5 {

class TernMapCollection;

namespace detail {

// How many millimetres a unit of each map is, on which map each node lies, and where each link
// leads: how far, in those units, and onto which map.
struct WalkScales {
  struct Walk {
    float distance;
    MapIndex map;
  };

  WalkScales(const GridGraph& graph, const TernMapCollection* maps);

  Indexed<Position, MapIndex> mapOf;
  Indexed<MapIndex, float> mmPerUnit;
  Indexed<LinkIndex, Walk> walks;
};

class WalkLengths {
 public:
  explicit WalkLengths(const WalkScales& scales) : scales_(scales), ways_(scales.mapOf.size()) {}

  // Each way goes on from that of the node's parent, which was measured before it.
  // REQUIRES: these are what a search settled, in its order.
  void measure(std::span<const Settled> settled);
  // As the segments of the route would say together. REQUIRES: the last search settled the node.
  float millimetresTo(Position end) const { return millimetres(ways_[end]); }

 private:
  struct Way {
    MapIndex map{0};
    float distance = 0;  // map units from the start
    // At the end of the last segment that is closed.
    float closedDistance = 0;
    float closedMm = 0;
  };

  float millimetres(const Way& way) const {
    return way.closedMm + (way.distance - way.closedDistance) * scales_.mmPerUnit[way.map];
  }

  const WalkScales& scales_;
  Indexed<Position, Way> ways_;
};

}  // namespace detail
}  // namespace tern
