#include "tools/import/osm/OsmFloors.hpp"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "tools/import/osm/OsmLevels.hpp"

namespace tern::imports {

namespace {

struct LevelFacts {
  bool isOwn = false;
  bool isShared = false;
  bool isReached = false;
  // What `level:ref` says, and how often.
  std::map<std::string, int> refs;
  Names names;
};

class FloorFinder {
 public:
  explicit FloorFinder(const OsmSelection& found) {
    for (const OsmOutline& area : found.areas) {
      const bool isMover = osmAreaMeaning(*area.tags)->drawn == AreaKind::mover;
      lie(area.levels, isMover);
      refer(area.levels, *area.tags);
    }
    for (const OsmLine& walk : found.walks) {
      lie(walk.levels, walk.levels.size() > 1);
      refer(walk.levels, walk.way->tags);
    }
    for (const OsmPoint& lift : found.lifts) lie(lift.levels, true);
    for (const OsmPoint& place : found.places) {
      lie(place.levels, false);
      refer(place.levels, place.node->tags);
    }
    for (const OsmOutline& level : found.levels) addLevel(level);
    for (const OsmOutline& building : found.buildings)
      leaveOut((*building.tags)["non_existent_levels"]);
  }

  std::map<double, LevelFacts> floors() {
    std::map<double, LevelFacts> kept;
    for (const auto& [level, facts] : levels_) {
      if (facts.isOwn || (facts.isShared && facts.isReached)) kept.emplace(level, facts);
    }
    return kept.empty() ? levels_ : kept;
  }

 private:
  void lie(const std::vector<double>& levels, bool isMover) {
    for (const double level : levels) {
      LevelFacts& facts = levels_[level];
      (isMover ? facts.isReached : levels.size() == 1 ? facts.isOwn : facts.isShared) = true;
    }
  }

  void refer(const std::vector<double>& levels, const OsmTags& tags) {
    if (levels.size() == 1 && tags.has("level:ref")) {
      ++levels_[levels.front()].refs[std::string(tags["level:ref"])];
    }
  }

  void addLevel(const OsmOutline& outline) {
    for (const double level : outline.levels) {
      LevelFacts& facts = levels_[level];
      facts.isOwn = true;
      if (facts.names.empty()) facts.names = osmNames(*outline.tags);
    }
    refer(outline.levels, *outline.tags);
  }

  // As a thirteenth floor, which ranges run over.
  void leaveOut(std::string_view levels) {
    for (const double level : osmLevels(levels).levels) {
      const auto known = levels_.find(level);
      if (known != levels_.end() && !known->second.isOwn) levels_.erase(known);
    }
  }

  std::map<double, LevelFacts> levels_;
};

}  // namespace

OsmFloors addOsmFloors(const OsmSelection& found, Draft& draft) {
  OsmFloors floors;
  for (const auto& [level, facts] : FloorFinder(found).floors()) {
    const std::string number = Value(level).printed();
    const auto ref =
        std::ranges::max_element(facts.refs, {}, &std::pair<const std::string, int>::second);
    DraftFloor floor;
    floor.id = "level " + number;
    floor.ordinal = level;
    floor.shortNames = {{"", ref == facts.refs.end() ? number : ref->first}};
    floor.names = facts.names.empty() ? floor.shortNames : facts.names;
    floors.emplace(level, draft.floors.size());
    draft.floors.push_back(std::move(floor));
  }
  return floors;
}

}  // namespace tern::imports
