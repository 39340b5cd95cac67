#include "tools/import/osm/OsmDoors.hpp"

#include <algorithm>
#include <cstdint>
#include <set>
#include <vector>

#include "tools/import/osm/OsmGeometry.hpp"
#include "tools/import/ways/Crossings.hpp"
#include "tools/import/ways/FloorAreas.hpp"

namespace tern::imports {

namespace {

class DoorReader {
 public:
  DoorReader(const OsmFrame& frame, const OsmPlans& plans, const OsmOutlines& outlines, Site& site,
             OsmPlaces& places)
      : frame_(frame),
        outlines_(outlines),
        site_(site),
        places_(places),
        walked_(plans.carved.areas),
        barred_(plans.barred) {}

  OsmDoors read(const std::set<OsmStop>& openings) {
    for (const OsmLine& wall : frame_.found.walls) {
      onWalls_.insert(wall.way->refs.begin(), wall.way->refs.end());
    }
    for (const OsmPoint& door : frame_.found.doors) readDoor(door);
    for (const auto& [node, floor] : openings) addDoor(*frame_.nodes.find(node), floor, false);
    return std::move(doors_);
  }

 private:
  void readDoor(const OsmPoint& door) {
    const std::string record = osmId(OsmKind::node, door.node->id);
    const auto floors =
        door.levels.empty() ? floorsAt(*door.node) : frame_.floorsOf(record, door.levels);
    const bool isShut = isOsmBarred(door.node->tags);
    bool isSomewhere = false;
    for (const std::size_t floor : floors) {
      isSomewhere |=
          isShut ? addShut(*door.node, floor) : addDoor(*door.node, floor, floors.size() > 1);
    }
    if (isShut && (isSomewhere || !door.levels.empty())) {
      frame_.tell(record, "noAccess", "It is closed to the public: nobody is led through it.");
      return;
    }
    // What a door opens in a wall that is drawn by itself is open without more.
    if (isSomewhere || onWalls_.contains(door.node->id)) return;
    if (door.levels.empty()) {
      ++doors_.others;
    } else {
      frame_.tell(record, "unreached", "No outline of an area goes through it.");
    }
  }

  // Where areas that it is part of lie, and ways that lead through it. One enters the building on
  // the ground, though what lies above it may be drawn over the same nodes.
  std::vector<std::size_t> floorsAt(const OsmNode& door) const {
    std::vector<std::size_t> floors = outlines_.floorsAt(door.id);
    for (std::size_t floor = 0; floor < frame_.draft.floors.size(); ++floor) {
      const bool isNew = std::ranges::find(floors, floor) == floors.end();
      if (isNew && frame_.nodes.isWalkedOn(door.id, floor)) floors.push_back(floor);
    }
    const auto ground = frame_.floors.find(0);
    if (!isOsmEntrance(door.tags) || ground == frame_.floors.end()) return floors;
    const bool isOnGround = std::ranges::find(floors, ground->second) != floors.end();
    return isOnGround || floors.empty() ? std::vector{ground->second} : floors;
  }

  // Whether it is a door of an area.
  bool addShut(const OsmNode& node, std::size_t floor) {
    const auto line = outlines_.doorAt(node.id, floor, osmDoorMetres(node.tags));
    if (!line || !isNearSite(line->front())) return false;
    frame_.draft.doors.push_back({floor, *line});
    site_.shutDoors.push_back({osmId(OsmKind::node, node.id), floor, *line});
    return true;
  }

  // Whether what lies on one of its sides is closed to the public.
  bool leadsToBarred(const Line& line, std::size_t floor) const {
    const auto isBarred = [&](const Crossing& crossing) {
      return isBarredBeside(floor, crossing.at, crossing.normal) ||
             isBarredBeside(floor, crossing.at, crossing.normal * -1);
    };
    return std::ranges::any_of(crossingsOf(line), isBarred);
  }

  bool isBarredBeside(std::size_t floor, Point at, Point normal) const {
    for (const double metres : besideDoorMetres) {
      const Point beside = at + normal * metres;
      if (walked_.at(floor, beside)) return false;
      if (barred_.at(floor, beside)) return true;
    }
    return false;
  }

  // Whether it is a door of an area, or a way leads through it.
  bool addDoor(const OsmNode& node, std::size_t floor, bool isOnSeveral) {
    if (!known_.insert({node.id, floor}).second) return true;
    const bool isWalked = frame_.nodes.isWalkedOn(node.id, floor);
    const bool isEntrance = isOsmEntrance(node.tags);
    if (isWalked && isEntrance) {
      frame_.draft.nodes[frame_.nodes.walkedOn(node.id, floor)].isEntrance = true;
    }
    const auto line = outlines_.doorAt(node.id, floor, osmDoorMetres(node.tags));
    const bool isDrawn = line && isNearSite(line->front());
    if (!isDrawn && !isWalked) return false;
    const std::string& id = frame_.nodes.idOn(node.id, floor, isOnSeveral);
    if (isEntrance && node.tags.has("name")) {
      places_.planDoor(
          {osmId(OsmKind::node, node.id), id, &node.tags, floor, *frame_.nodes.placeOf(node.id)});
    }
    if (!isDrawn) return true;
    frame_.draft.doors.push_back({floor, *line});
    if (leadsToBarred(*line, floor)) return true;
    site_.doors.push_back({id, floor, *line});
    if (isEntrance) doors_.entrances.insert(id);
    return true;
  }

  const OsmFrame& frame_;
  const OsmOutlines& outlines_;
  Site& site_;
  OsmPlaces& places_;
  FloorAreas walked_;
  FloorAreas barred_;
  OsmDoors doors_;
  std::set<OsmStop> known_;
  std::set<std::int64_t> onWalls_;
};

}  // namespace

OsmDoors readOsmDoors(const OsmFrame& frame, const OsmPlans& plans, const OsmOutlines& outlines,
                      const std::set<OsmStop>& openings, Site& site, OsmPlaces& places) {
  return DoorReader(frame, plans, outlines, site, places).read(openings);
}

}  // namespace tern::imports
