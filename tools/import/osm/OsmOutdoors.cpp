#include "tools/import/osm/OsmOutdoors.hpp"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "tools/import/osm/OsmGeometry.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

constexpr double outdoorMetres = 100;
constexpr std::ptrdiff_t leastEntrances = 2;

// REQUIRES: at least one area.
Box besideOf(std::span<const OsmArea> areas) {
  Box box = boxOfAll(areas.front().shapes);
  for (const OsmArea& area : areas) box = box.with(boxOfAll(area.shapes));
  return box.grownBy(outdoorMetres);
}

bool isIn(const Box& box, const Line& line) {
  return !line.empty() && std::ranges::all_of(line, [&](Point at) { return box.contains(at); });
}

std::ptrdiff_t entrancesOn(const OsmSelection& found, const OsmOutline& outline) {
  std::set<std::int64_t> nodes;
  for (const OsmRing& ring : outline.outer) nodes.insert(ring.begin(), ring.end());
  return std::ranges::count_if(found.doors, [&](const OsmPoint& door) {
    return nodes.contains(door.node->id) && isOsmEntrance(door.node->tags) &&
           std::ranges::find(door.levels, 0.0) != door.levels.end();
  });
}

bool isOnGround(const OsmTags& tags) {
  const bool isBelow = tags.has("tunnel") && !tags.is("tunnel", "no");
  const bool isOther = tags.has("layer") && !tags.is("layer", "0");
  return !isBelow && !isOther;
}

// What one comes to from where one is already.
class Follower {
 public:
  explicit Follower(std::vector<const OsmLine*> walks)
      : walks_(std::move(walks)), isTaken_(walks_.size()) {
    for (std::size_t i = 0; i < walks_.size(); ++i) {
      for (const std::int64_t node : walks_[i]->way->refs) through_[node].push_back(i);
    }
  }

  void follow(std::int64_t node) {
    std::vector<std::int64_t> open{node};
    while (!open.empty()) {
      const auto walks = through_.find(open.back());
      open.pop_back();
      if (walks == through_.end()) continue;
      for (const std::size_t walk : walks->second) {
        if (isTaken_[walk]) continue;
        isTaken_[walk] = true;
        const auto& refs = walks_[walk]->way->refs;
        open.insert(open.end(), refs.begin(), refs.end());
      }
      through_.erase(walks);
    }
  }

  std::vector<const OsmLine*> taken() const {
    std::vector<const OsmLine*> walks;
    for (std::size_t i = 0; i < walks_.size(); ++i) {
      if (isTaken_[i]) walks.push_back(walks_[i]);
    }
    return walks;
  }

 private:
  std::vector<const OsmLine*> walks_;
  std::vector<bool> isTaken_;
  std::unordered_map<std::int64_t, std::vector<std::size_t>> through_;
};

}  // namespace

std::vector<const OsmOutline*> groundsBeside(const OsmSelection& found, const OsmNodes& nodes,
                                             std::span<const OsmArea> areas) {
  std::vector<const OsmOutline*> grounds;
  if (areas.empty()) return grounds;
  const Box near = besideOf(areas);
  for (const OsmOutline& outline : found.grounds) {
    const bool isBeside = isOsmOutline(*outline.tags)
                              ? std::ranges::all_of(outline.outer,
                                                    [&](const OsmRing& ring) {
                                                      return isIn(near, osmLine(nodes, ring));
                                                    })
                              : entrancesOn(found, outline) >= leastEntrances;
    if (isBeside) grounds.push_back(&outline);
  }
  return grounds;
}

std::vector<const OsmLine*> walksBeside(const OsmSelection& found, const OsmNodes& nodes,
                                        std::span<const OsmArea> areas) {
  if (areas.empty()) return {};
  const Box near = besideOf(areas);
  std::vector<const OsmLine*> outdoors;
  for (const OsmLine& walk : found.walks) {
    if (!walk.levels.empty() || !isOnGround(walk.way->tags)) continue;
    if (isIn(near, osmLine(nodes, walk.way->refs))) outdoors.push_back(&walk);
  }
  Follower follower(std::move(outdoors));
  for (const OsmPoint& door : found.doors) {
    if (!isOsmBarred(door.node->tags)) follower.follow(door.node->id);
  }
  for (const OsmLine& walk : found.walks) {
    if (walk.levels.empty()) continue;
    for (const std::int64_t node : walk.way->refs) follower.follow(node);
  }
  return follower.taken();
}

}  // namespace tern::imports
