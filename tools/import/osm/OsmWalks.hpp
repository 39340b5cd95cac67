// The ways that people walk, as they are drawn: footways, steps, escalators. They become nodes and
// links of the draft, each node where a way ends, meets another or goes through a door.
//
// Which end of a way between levels is the lower one follows from what it meets there, from the
// levels of its nodes, from its incline, or from the areas that its ends lie in.
//
// Ownership: borrows what it is made of. Threads: one caller at a time.
// Fails: never; what cannot be told is told of in the draft.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/osm/OsmCodes.hpp"
#include "tools/import/osm/OsmNodes.hpp"
#include "tools/import/osm/OsmOutlines.hpp"

namespace tern::imports {

struct OsmWalk {
  const OsmWay* way = nullptr;
  OsmWalkMeaning meaning;
  // From the lowest to the highest; at least one.
  std::vector<std::size_t> floors;
};

// A node as it lies on a floor.
using OsmStop = std::pair<std::int64_t, std::size_t>;

class OsmWalks {
 public:
  // Whether an area of the floor holds the point.
  using IsHeld = std::function<bool(std::size_t floor, Point at)>;

  OsmWalks(std::vector<OsmWalk> walks, OsmNodes& nodes, const OsmOutlines& outlines, IsHeld isHeld,
           Draft& draft);

  // Where links have to meet what is not a way: doors and lifts.
  void stopAt(std::int64_t node) { stops_.insert(node); }
  // Where a door is closed to the public. No way leads up to it, as none leads through it.
  void shutAt(std::int64_t node) { shut_.insert(node); }
  // On which floors a node is known to lie: that of a lift, of a door.
  void state(std::int64_t node, std::vector<std::size_t> floors);

  void add();

  // After `add`: the ends of links.
  const std::set<OsmStop>& ends() const { return ends_; }
  // Where a way goes through a wall.
  std::vector<OsmStop> throughWalls() const;

 private:
  struct Anchor {
    std::size_t index;
    std::size_t floor;
  };
  using Floors = std::vector<std::size_t>;

  Floors metAt(const OsmWalk& walk, std::int64_t node) const;
  Floors outlinedAt(const OsmWalk& walk, std::int64_t node) const;
  Floors heldAt(const OsmWalk& walk, std::int64_t node) const;
  std::optional<bool> risesBy(const OsmWalk& walk, const Floors& front, const Floors& back) const;
  bool rises(const OsmWalk& walk);
  std::vector<Anchor> anchorsOf(const OsmWalk& walk);
  bool isLeftAt(const OsmWalk& walk, std::int64_t end, std::size_t floor) const;
  bool addStoreys(const OsmWalk& walk, const std::vector<Anchor>& anchors);
  void addClimb(const OsmWalk& walk);
  void addFlat(const OsmWalk& walk, std::size_t from, std::size_t to, std::size_t floor);
  bool isStepAt(std::int64_t node) const;
  void addLink(const OsmWalk& walk, OsmStop from, OsmStop to, Line bends, bool hasStep);
  bool isStop(const OsmWalk& walk, std::size_t index, std::size_t floor) const;
  bool goesThroughWall(const OsmWalk& walk, std::size_t index, std::size_t floor) const;

  std::vector<OsmWalk> walks_;
  OsmNodes& nodes_;
  const OsmOutlines& outlines_;
  IsHeld isHeld_;
  Draft& draft_;
  std::set<std::int64_t> stops_;
  std::set<std::int64_t> shut_;
  std::set<OsmStop> ends_;
  // Of each node how often ways go through it, and the floors that all of them share.
  std::map<std::int64_t, int> uses_;
  std::map<std::int64_t, Floors> shared_;
  // How many of them end at a node on a floor, or lead along that floor through it.
  std::map<OsmStop, int> walksAt_;
  std::map<std::int64_t, int> pieces_;
};

}  // namespace tern::imports
