// How long the ways are that a search has found, in millimetres that are walked.
//
// A way is measured from the last of its nodes that has been measured already, so that all ways of
// one search together take time linear in the nodes that they lead over.
//
// Ownership: borrows the scales. Threads: one; any number may share scales.
// Fails: never; a map that is unknown has the scale 0.
#pragma once

#include <cstdint>
#include <vector>

#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"

namespace tern::inline v5 {

class TernMapCollection;

namespace detail {

// On which map each node lies, how many millimetres a unit of each map is, and how long each link
// is in those units.
struct WalkScales {
  WalkScales(const GridGraph& graph, const TernMapCollection* maps);

  Indexed<Position, MapIndex> mapOf;
  Indexed<MapIndex, float> mmPerUnit;
  const Indexed<LinkIndex, float> linkLengths;
};

class WalkLengths {
 public:
  explicit WalkLengths(const WalkScales& scales) : scales_(scales), ways_(scales.mapOf.size()) {}

  // From here on the ways are those of another search.
  void begin();
  // As the segments of the route would say together. REQUIRES: the state is of that search, and
  // the search has come to the node.
  float millimetresTo(const SearchState& state, Position end);

 private:
  struct Way {
    std::uint32_t search = 0;  // by which the rest was written
    float distance = 0;        // map units from the start
    // At the end of the last segment that is closed.
    float closedDistance = 0;
    float closedMm = 0;
  };

  float millimetres(const Way& way, Position node) const;
  Way onward(const SearchState& state, Way way, Position from, Position to) const;

  const WalkScales& scales_;
  Indexed<Position, Way> ways_;
  std::uint32_t search_ = 0;
  std::vector<Position> unmeasured_;
};

}  // namespace detail
}  // namespace tern
