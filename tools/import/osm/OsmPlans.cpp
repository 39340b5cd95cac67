#include "tools/import/osm/OsmPlans.hpp"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <utility>

#include "tools/import/osm/OsmGeometry.hpp"
#include "tools/import/osm/OsmOutdoors.hpp"
#include "tools/import/osm/OsmWalls.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

// A room of this size with a lift's node in it is the lift.
constexpr double mostCabinArea = 40;

void append(Shapes& all, const Shapes& shapes) {
  all.insert(all.end(), shapes.begin(), shapes.end());
}

class PlanReader {
 public:
  explicit PlanReader(const OsmFrame& frame) : frame_(frame) {}

  OsmPlans read() {
    for (const OsmOutline& outline : frame_.found.areas) readArea(outline);
    readCabins();
    readGrounds();
    readWalls();
    for (const OsmOutline& column : frame_.found.columns) readColumn(column);
    plans_.carved = carved(plans_.areas, obstacles_, frame_.draft.oddities);
    for (const OsmArea& area : plans_.areas) {
      if (area.meaning.isWalked) continue;
      plans_.barred.push_back({area.id, area.floor, LinkKind::walkway, false, area.shapes});
    }
    drawAreas();
    return std::move(plans_);
  }

 private:
  void readArea(const OsmOutline& outline) {
    const Shapes shapes = osmShapes(frame_.nodes, outline);
    if (shapes.empty()) {
      frame_.tell(outline.record, "noShape", "It encloses nothing near the site.");
      return;
    }
    const bool isOnSeveral = outline.levels.size() > 1;
    std::vector<OsmRing> rings = outline.outer;
    rings.insert(rings.end(), outline.inner.begin(), outline.inner.end());
    for (const std::size_t floor : frame_.floorsOf(outline.record, outline.levels)) {
      plans_.areas.push_back({outline.record, frame_.idOn(outline.record, floor, isOnSeveral),
                              outline.tags, *osmAreaMeaning(*outline.tags), floor, shapes, rings});
    }
  }

  // The nodes of lifts that lie in a room of their own stand for it.
  void readCabins() {
    for (const OsmPoint& lift : frame_.found.lifts) {
      bool isCabin = false;
      for (OsmArea& area : plans_.areas) {
        if (!isCabinOf(area, lift)) continue;
        isCabin = true;
        const bool isStepFree = area.meaning.link == LinkKind::stepFreeLift;
        if (area.meaning.isWalked && !isStepFree) area.meaning = osmLiftMeaning(lift.node->tags);
      }
      if (!isCabin) plans_.lifts.push_back(lift);
    }
  }

  bool isCabinOf(const OsmArea& area, const OsmPoint& lift) const {
    const Polygon& shape = area.shapes.front();
    const Point at = *frame_.nodes.placeOf(lift.node->id);
    const double level = frame_.draft.floors[area.floor].ordinal;
    return area.meaning.isWalled && boxOf(shape).contains(at) && holds(shape, at) &&
           areaOf(shape) <= mostCabinArea &&
           std::ranges::find(lift.levels, level) != lift.levels.end();
  }

  // What is open outdoors, at the height of the ground.
  void readGrounds() {
    plans_.others = frame_.found.grounds.size();
    const auto ground = frame_.floors.find(0);
    if (ground == frame_.floors.end()) return;
    bool isAny = false;
    for (const OsmOutline* const outline :
         groundsBeside(frame_.found, frame_.nodes, plans_.areas)) {
      Shapes shapes = osmShapes(frame_.nodes, *outline);
      if (shapes.empty()) continue;
      isAny = true;
      --plans_.others;
      OsmAreaMeaning meaning{AreaKind::outdoors, LinkKind::walkway, false};
      meaning.isGround = true;
      plans_.areas.push_back({outline->record, outline->record, outline->tags, meaning,
                              ground->second, std::move(shapes), outline->outer});
    }
    for (const OsmOutline& building : frame_.found.buildings) {
      if (!isAny || isOsmRoof(*building.tags)) continue;
      append(obstacles_.buildings, osmShapes(frame_.nodes, building));
    }
  }

  void readWalls() {
    std::set<std::int64_t> doors;
    for (const OsmPoint& door : frame_.found.doors) {
      if (!isOsmBarred(door.node->tags)) doors.insert(door.node->id);
    }
    for (const OsmLine& wall : frame_.found.walls) {
      const std::string record = osmId(OsmKind::way, wall.way->id);
      const Line line = osmLine(frame_.nodes, wall.way->refs);
      if (line.size() < 2 || !std::ranges::all_of(line, isNearSite)) {
        frame_.tell(record, "noShape", "It has no line near the site.");
        continue;
      }
      const Shapes thick = wallShapes(frame_.nodes, *wall.way, doors);
      for (const std::size_t floor : frame_.floorsOf(record, wall.levels)) {
        frame_.draft.walls.push_back({floor, line});
        append(obstacles_.on[floor], thick);
      }
    }
  }

  void readColumn(const OsmOutline& column) {
    const Shapes shapes = osmShapes(frame_.nodes, column);
    if (shapes.empty()) {
      frame_.tell(column.record, "noShape", "It encloses nothing near the site.");
    }
    for (const std::size_t floor : frame_.floorsOf(column.record, column.levels)) {
      if (shapes.empty()) continue;
      append(obstacles_.on[floor], shapes);
      const std::string id = frame_.idOn(column.record, floor, column.levels.size() > 1);
      frame_.draft.areas.push_back({id, floor, AreaKind::closed, {}, shapes});
    }
  }

  // What is open outdoors is drawn as it is left by the buildings on it.
  void drawAreas() {
    for (std::size_t i = 0; i < plans_.carved.areas.size(); ++i) {
      const SiteArea& area = plans_.carved.areas[i];
      if (plans_.carved.uses[i] != AreaUse::ground) continue;
      frame_.draft.areas.push_back({area.id, area.floor, AreaKind::outdoors, {}, area.shapes});
    }
    for (const OsmArea& area : plans_.areas) {
      if (area.meaning.isGround) continue;
      const Names names = osmCategory(*area.tags) == "walkway" ? Names() : osmNames(*area.tags);
      frame_.draft.areas.push_back({area.id, area.floor, area.meaning.drawn, names, area.shapes});
    }
  }

  const OsmFrame& frame_;
  OsmPlans plans_;
  OsmObstacles obstacles_;
};

}  // namespace

OsmPlans readOsmPlans(const OsmFrame& frame) { return PlanReader(frame).read(); }

}  // namespace tern::imports
