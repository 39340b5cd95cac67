#include "tools/import/osm/OsmReader.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tools/import/draft/EmptyFloors.hpp"
#include "tools/import/draft/MiddleValue.hpp"
#include "tools/import/osm/FloorAreas.hpp"
#include "tools/import/osm/MissingDoors.hpp"
#include "tools/import/osm/OsmArea.hpp"
#include "tools/import/osm/OsmCarving.hpp"
#include "tools/import/osm/OsmFloors.hpp"
#include "tools/import/osm/OsmGeometry.hpp"
#include "tools/import/osm/OsmHead.hpp"
#include "tools/import/osm/OsmNodes.hpp"
#include "tools/import/osm/OsmOutdoors.hpp"
#include "tools/import/osm/OsmOutlines.hpp"
#include "tools/import/osm/OsmPlaces.hpp"
#include "tools/import/osm/OsmSelection.hpp"
#include "tools/import/osm/OsmSource.hpp"
#include "tools/import/osm/OsmWalks.hpp"
#include "tools/import/osm/OsmWalls.hpp"
#include "tools/import/osm/SameNodes.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/Shapes.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

namespace {

// A record counts on each of its floors, and so do its corners.
constexpr std::size_t mostThings = 50'000;
constexpr std::size_t mostCorners = 1'000'000;
// A room of this size with a lift's node in it is the lift.
constexpr double mostCabinArea = 40;
constexpr double sameStandMetres = 0.01;

class OsmReader {
 public:
  explicit OsmReader(const SourceFiles& source) : name_(source.name()) {
    ReadOsmSource read = readOsmSource(source, draft_.oddities);
    error_ = std::move(read.error);
    data_ = std::move(read.data);
    draft_.stamp = read.stamp;
  }

  ReadDraft read() {
    if (error_) return {{}, error_};
    found_ = selectOsm(data_, draft_.oddities);
    nodes_.emplace(data_, draft_);
    if (!findMiddle()) return {{}, "no room, corridor or way of it lies on a level"};
    if (isTooMuch()) {
      return {{},
              "more than " + std::to_string(mostThings) + " things of it, or " +
                  std::to_string(mostCorners) + " corners, lie on levels"};
    }
    draft_.buildings.push_back({name_, {}, {}});
    floors_ = addOsmFloors(found_, draft_);
    readPlans();
    readWalks();
    readDoors();
    planPlaces();
    const MadeWays made = makeWays(site_, draft_);
    finish(made);
    if (draft_.nodes.empty()) return {{}, "nothing of it can be walked"};
    return {std::move(draft_), std::nullopt};
  }

 private:
  void tell(const std::string& record, std::string_view kind, std::string why) {
    draft_.oddities.tell(record, kind, std::move(why));
  }

  // The plane touches the globe amid what is indoors.
  bool findMiddle() {
    std::vector<double> longitudes;
    std::vector<double> latitudes;
    const auto add = [&](std::int64_t id) {
      constexpr double mostLatitude = 85;
      const OsmNode* const node = nodes_->find(id);
      if (node == nullptr || std::abs(node->at.latitude) > mostLatitude) return;
      longitudes.push_back(node->at.longitude);
      latitudes.push_back(node->at.latitude);
    };
    for (const OsmOutline& area : found_.areas) {
      for (const OsmRing& ring : area.outer) std::ranges::for_each(ring, add);
    }
    for (const OsmLine& walk : found_.walks) {
      if (!walk.levels.empty()) std::ranges::for_each(walk.way->refs, add);
    }
    if (longitudes.empty()) return false;
    draft_.plane = LocalPlane({middleValue(longitudes), middleValue(latitudes)});
    return true;
  }

  bool isTooMuch() const {
    std::size_t things = 0;
    std::size_t corners = 0;
    const auto add = [&](std::size_t levels, std::size_t cornersOfEach) {
      things += levels;
      corners += levels * cornersOfEach;
    };
    for (const auto* const outlines : {&found_.areas, &found_.columns, &found_.levels}) {
      for (const OsmOutline& outline : *outlines) add(outline.levels.size(), cornersOf(outline));
    }
    for (const auto* const lines : {&found_.walls, &found_.walks}) {
      for (const OsmLine& line : *lines) add(line.levels.size(), line.way->refs.size());
    }
    for (const auto* const points : {&found_.doors, &found_.lifts, &found_.places}) {
      for (const OsmPoint& point : *points) add(point.levels.size(), 1);
    }
    return things > mostThings || corners > mostCorners;
  }

  static std::size_t cornersOf(const OsmOutline& outline) {
    std::size_t corners = 0;
    for (const OsmRing& ring : outline.outer) corners += ring.size();
    for (const OsmRing& ring : outline.inner) corners += ring.size();
    return corners;
  }

  // Those of the levels that are floors; the others are told of.
  std::vector<std::size_t> floorsOf(const std::string& record, const std::vector<double>& levels) {
    std::vector<std::size_t> floors;
    for (const double level : levels) {
      const auto floor = floors_.find(level);
      if (floor != floors_.end()) {
        floors.push_back(floor->second);
      } else {
        tell(record, "noFloor",
             "Nothing lies on its level " + Value(level).printed() + " alone or leads to it.");
      }
    }
    return floors;
  }

  std::string idOn(const std::string& record, std::size_t floor, bool isOnSeveral) const {
    return isOnSeveral ? record + "@" + nodes_->levelOf(floor) : record;
  }

  void readPlans() {
    for (const OsmOutline& outline : found_.areas) readArea(outline);
    readCabins();
    readGrounds();
    nameOsmVenue(draft_, name_, found_, *nodes_, areas_);
    readWalls();
    for (const OsmOutline& column : found_.columns) readColumn(column);
    outlines_.emplace(areas_, [this](std::int64_t node) { return nodes_->placeOf(node); });
    CarvedAreas made = carved(areas_, obstacles_, draft_.oddities);
    site_.areas = std::move(made.areas);
    uses_ = std::move(made.uses);
    siteAreas_ = std::move(made.of);
    byPlace_.emplace(site_.areas);
    drawAreas();
  }

  void readArea(const OsmOutline& outline) {
    const Shapes shapes = osmShapes(*nodes_, outline);
    if (shapes.empty()) {
      tell(outline.record, "noShape", "It encloses nothing near the site.");
      return;
    }
    const bool isOnSeveral = outline.levels.size() > 1;
    std::vector<OsmRing> rings = outline.outer;
    rings.insert(rings.end(), outline.inner.begin(), outline.inner.end());
    for (const std::size_t floor : floorsOf(outline.record, outline.levels)) {
      areas_.push_back({outline.record, idOn(outline.record, floor, isOnSeveral), outline.tags,
                        *osmAreaMeaning(*outline.tags), floor, shapes, rings});
    }
  }

  // The nodes of lifts that lie in a room of their own stand for it.
  void readCabins() {
    std::erase_if(found_.lifts, [&](const OsmPoint& lift) {
      bool isCabin = false;
      for (OsmArea& area : areas_) {
        if (!isCabinOf(area, lift)) continue;
        isCabin = true;
        const bool isStepFree = area.meaning.link == LinkKind::stepFreeLift;
        if (!isStepFree) area.meaning = osmLiftMeaning(lift.node->tags);
      }
      return isCabin;
    });
  }

  bool isCabinOf(const OsmArea& area, const OsmPoint& lift) const {
    const Polygon& shape = area.shapes.front();
    const Point at = *nodes_->placeOf(lift.node->id);
    const double level = draft_.floors[area.floor].ordinal;
    return area.meaning.isWalled && boxOf(shape).contains(at) && holds(shape, at) &&
           areaOf(shape) <= mostCabinArea &&
           std::ranges::find(lift.levels, level) != lift.levels.end();
  }

  // What is open outdoors, at the height of the ground.
  void readGrounds() {
    const auto ground = floors_.find(0);
    const auto beside = groundsBeside(found_, *nodes_, areas_);
    found_.others += found_.grounds.size();
    if (ground == floors_.end()) return;
    bool isAny = false;
    for (const OsmOutline* const outline : beside) {
      Shapes shapes = osmShapes(*nodes_, *outline);
      if (shapes.empty()) continue;
      isAny = true;
      --found_.others;
      OsmAreaMeaning meaning{AreaKind::outdoors, LinkKind::walkway, false};
      meaning.isGround = true;
      areas_.push_back({outline->record, outline->record, outline->tags, meaning, ground->second,
                        std::move(shapes), outline->outer});
    }
    for (const OsmOutline& building : found_.buildings) {
      if (!isAny || isOsmRoof(*building.tags)) continue;
      append(obstacles_.buildings, osmShapes(*nodes_, building));
    }
  }

  static void append(Shapes& all, const Shapes& shapes) {
    all.insert(all.end(), shapes.begin(), shapes.end());
  }

  void readWalls() {
    std::set<std::int64_t> doors;
    for (const OsmPoint& door : found_.doors) doors.insert(door.node->id);
    for (const OsmLine& wall : found_.walls) {
      const std::string record = osmId(OsmKind::way, wall.way->id);
      const Line line = osmLine(*nodes_, wall.way->refs);
      if (line.size() < 2 || !std::ranges::all_of(line, isNearSite)) {
        tell(record, "noShape", "It has no line near the site.");
        continue;
      }
      const Shapes thick = wallShapes(*nodes_, *wall.way, doors);
      for (const std::size_t floor : floorsOf(record, wall.levels)) {
        draft_.walls.push_back({floor, line});
        append(obstacles_.on[floor], thick);
      }
    }
  }

  void readColumn(const OsmOutline& column) {
    const Shapes shapes = osmShapes(*nodes_, column);
    if (shapes.empty()) tell(column.record, "noShape", "It encloses nothing near the site.");
    for (const std::size_t floor : floorsOf(column.record, column.levels)) {
      if (shapes.empty()) continue;
      append(obstacles_.on[floor], shapes);
      const std::string id = idOn(column.record, floor, column.levels.size() > 1);
      draft_.areas.push_back({id, floor, AreaKind::closed, {}, shapes});
    }
  }

  // What is open outdoors is drawn as it is left by the buildings on it.
  void drawAreas() {
    for (std::size_t i = 0; i < site_.areas.size(); ++i) {
      const SiteArea& area = site_.areas[i];
      if (uses_[i] != OsmUse::ground) continue;
      draft_.areas.push_back({area.id, area.floor, AreaKind::outdoors, {}, area.shapes});
    }
    for (const OsmArea& area : areas_) {
      if (area.meaning.isGround) continue;
      const Names names = osmCategory(*area.tags) == "walkway" ? Names() : osmNames(*area.tags);
      draft_.areas.push_back({area.id, area.floor, area.meaning.drawn, names, area.shapes});
    }
  }

  void readWalks() {
    OsmWalks made(
        chosenWalks(), *nodes_, *outlines_,
        [this](std::size_t floor, Point at) { return byPlace_->at(floor, at).has_value(); },
        draft_);
    for (const OsmPoint& door : found_.doors) stateAt(made, door);
    for (const OsmPoint& lift : found_.lifts) stateAt(made, lift);
    made.add();
    for (const OsmStop& stop : made.throughWalls()) openings_.insert(stop);
    for (const OsmPoint& lift : found_.lifts) addLift(lift);
    for (const OsmStop& stop : made.ends()) standAt(stop);
  }

  std::vector<OsmWalk> chosenWalks() {
    std::vector<OsmWalk> walks;
    for (const OsmLine& line : found_.walks) {
      if (!line.levels.empty()) addWalk(walks, line, line.levels);
    }
    const std::size_t onLevels = static_cast<std::size_t>(std::ranges::count_if(
        found_.walks, [](const OsmLine& line) { return !line.levels.empty(); }));
    found_.others += found_.walks.size() - onLevels;
    if (!floors_.contains(0)) return walks;
    for (const OsmLine* const line : walksBeside(found_, *nodes_, areas_)) {
      --found_.others;
      addWalk(walks, *line, {0});
    }
    return walks;
  }

  void addWalk(std::vector<OsmWalk>& walks, const OsmLine& line,
               const std::vector<double>& levels) {
    const std::string record = osmId(OsmKind::way, line.way->id);
    if (!std::ranges::all_of(osmLine(*nodes_, line.way->refs), isNearSite)) {
      tell(record, "far", "It lies more than 10 km from the others.");
      return;
    }
    auto floors = floorsOf(record, levels);
    if (floors.empty()) return;
    walks.push_back({line.way, *osmWalkMeaning(line.way->tags), std::move(floors)});
  }

  void stateAt(OsmWalks& walks, const OsmPoint& point) {
    std::vector<std::size_t> floors;
    for (const double level : point.levels) {
      const auto floor = floors_.find(level);
      if (floor != floors_.end()) floors.push_back(floor->second);
    }
    if (!floors.empty()) walks.state(point.node->id, floors);
    walks.stopAt(point.node->id);
  }

  // One that is drawn as a node alone.
  void addLift(const OsmPoint& lift) {
    const std::string record = osmId(OsmKind::node, lift.node->id);
    const auto floors = floorsOf(record, lift.levels);
    if (floors.size() < 2 || !isNearSite(*nodes_->placeOf(lift.node->id))) {
      tell(record, "leadsNowhere", "The lift does not lead from one floor to another.");
      return;
    }
    std::optional<std::size_t> below;
    for (const std::size_t floor : floors) {
      const std::size_t node = nodes_->walkedOn(lift.node->id, floor, true);
      standAt({lift.node->id, floor});
      if (below) addRide(lift.node->tags, *below, node);
      below = node;
    }
  }

  void addRide(const OsmTags& tags, std::size_t below, std::size_t above) {
    DraftLink link;
    link.id = draft_.nodes[below].id + "^" + draft_.nodes[above].id;
    link.from = below;
    link.to = above;
    link.kind = osmLiftMeaning(tags).link;
    link.details = osmDetails(tags);
    draft_.links.push_back(std::move(link));
  }

  // The made ways lead to what is drawn amid an area.
  void standAt(OsmStop stop) {
    const std::size_t node = nodes_->walkedOn(stop.first, stop.second);
    const Point at = draft_.nodes[node].at;
    const bool isDoor =
        isOsmDoor(nodes_->find(stop.first)->tags) && !outlines_->floorsAt(stop.first).empty();
    if (isDoor || openings_.contains(stop) || !byPlace_->at(stop.second, at)) return;
    if (!standing_.insert(node).second) return;
    joints_.emplace_back(site_.stands.size(), node);
    site_.stands.push_back({draft_.nodes[node].id, stop.second, at});
  }

  void readDoors() {
    for (const OsmPoint& door : found_.doors) {
      const std::string record = osmId(OsmKind::node, door.node->id);
      const auto floors =
          door.levels.empty() ? floorsAt(*door.node) : floorsOf(record, door.levels);
      bool isSomewhere = false;
      for (const std::size_t floor : floors) {
        isSomewhere |= addDoor(*door.node, floor, floors.size() > 1);
      }
      if (isSomewhere) continue;
      if (door.levels.empty()) {
        ++found_.others;
      } else {
        tell(record, "unreached", "No outline of an area goes through it.");
      }
    }
    for (const auto& [node, floor] : openings_) addDoor(*nodes_->find(node), floor, false);
    addMissingDoors(site_, uses_, draft_.oddities);
  }

  // Where areas that it is part of lie, and ways that lead through it. One enters the building on
  // the ground, though what lies above it may be drawn over the same nodes.
  std::vector<std::size_t> floorsAt(const OsmNode& door) const {
    std::vector<std::size_t> floors = outlines_->floorsAt(door.id);
    for (std::size_t floor = 0; floor < draft_.floors.size(); ++floor) {
      const bool isNew = std::ranges::find(floors, floor) == floors.end();
      if (isNew && nodes_->isWalkedOn(door.id, floor)) floors.push_back(floor);
    }
    const auto ground = floors_.find(0);
    if (!isOsmEntrance(door.tags) || ground == floors_.end()) return floors;
    const bool isOnGround = std::ranges::find(floors, ground->second) != floors.end();
    return isOnGround || floors.empty() ? std::vector{ground->second} : floors;
  }

  // Whether it is a door of an area, or a way leads through it.
  bool addDoor(const OsmNode& node, std::size_t floor, bool isOnSeveral) {
    if (!doors_.insert({node.id, floor}).second) return true;
    const bool isWalked = nodes_->isWalkedOn(node.id, floor);
    const bool isEntrance = isOsmEntrance(node.tags);
    if (isWalked && isEntrance) {
      draft_.nodes[nodes_->walkedOn(node.id, floor)].isEntrance = true;
    }
    const auto line = outlines_->doorAt(node.id, floor, osmDoorMetres(node.tags));
    if (!line || !isNearSite(line->front())) return isWalked;
    const std::string& id = nodes_->idOn(node.id, floor, isOnSeveral);
    draft_.doors.push_back({floor, *line});
    site_.doors.push_back({id, floor, *line});
    if (isEntrance) entrances_.insert(id);
    if (isEntrance && node.tags.has("name")) {
      places_.planDoor(
          {osmId(OsmKind::node, node.id), id, &node.tags, floor, *nodes_->placeOf(node.id)});
    }
    return true;
  }

  void planPlaces() {
    for (std::size_t i = 0; i < areas_.size(); ++i) {
      const OsmArea& area = areas_[i];
      const bool isNone = area.meaning.drawn == AreaKind::mover || area.meaning.isGround;
      if (isNone || !OsmPlaces::isPlace(*area.tags)) continue;
      places_.plan(
          {area.record, area.id, area.tags, area.floor, middleOfShape(area.shapes.front())},
          siteAreas_[i]);
    }
    for (const OsmPoint& place : found_.places) planNode(place);
  }

  void planNode(const OsmPoint& place) {
    const std::string record = osmId(OsmKind::node, place.node->id);
    const Point at = *nodes_->placeOf(place.node->id);
    if (!isNearSite(at)) {
      tell(record, "far", "It lies more than 10 km from the others.");
      return;
    }
    for (const std::size_t floor : floorsOf(record, place.levels)) {
      const auto area = byPlace_->at(floor, at);
      std::vector<std::size_t> rooms;
      if (area && uses_[*area] > OsmUse::ground) rooms.push_back(*area);
      const std::string id = idOn(record, floor, place.levels.size() > 1);
      places_.plan({record, id, &place.node->tags, floor, at}, std::move(rooms));
    }
  }

  void finish(const MadeWays& made) {
    joinStands(made);
    places_.add(made);
    for (DraftNode& node : draft_.nodes) {
      node.isEntrance = node.isEntrance || entrances_.contains(node.id);
    }
    mergeSameNodes(draft_, same_);
    drawFloors();
    dropEmptyFloors(draft_);
    if (found_.others == 0) return;
    tell("others", "notIndoors",
         found_.others == 1
             ? "1 record with tags says nothing of indoors."
             : std::to_string(found_.others) + " records with tags say nothing of indoors.");
  }

  // Made nodes are those that are drawn where they lie in one place.
  void joinStands(const MadeWays& made) {
    for (const auto& [stand, node] : joints_) {
      const auto at = made.ofStand[stand];
      if (!at || draft_.nodes[*at].id == draft_.nodes[node].id) continue;
      if (apart(draft_.nodes[node].at, draft_.nodes[*at].at) < sameStandMetres) {
        same_.emplace(*at, node);
        continue;
      }
      DraftLink link;
      link.id = draft_.nodes[node].id + "=" + draft_.nodes[*at].id;
      link.from = node;
      link.to = *at;
      link.isWithinArea = true;
      draft_.links.push_back(std::move(link));
    }
  }

  // As stated, else what lies on it and the buildings round that together.
  void drawFloors() {
    for (const OsmOutline& level : found_.levels) {
      const Shapes shapes = osmShapes(*nodes_, level);
      for (const std::size_t floor : floorsOf(level.record, level.levels)) {
        append(draft_.floors[floor].shapes, shapes);
      }
    }
    std::vector<Shapes> together(draft_.floors.size());
    const auto add = [&](std::size_t floor, const Shapes& shapes) {
      together[floor] = together[floor].empty() ? shapes : joined(together[floor], shapes);
    };
    for (const OsmArea& area : areas_) add(area.floor, repaired(area.shapes));
    const std::vector<double> ground{0};
    for (const OsmOutline& building : found_.buildings) {
      const Shapes shapes = repaired(osmShapes(*nodes_, building));
      for (const double level : building.levels.empty() ? ground : building.levels) {
        const auto floor = floors_.find(level);
        if (floor == floors_.end() || shapes.empty()) continue;
        if (!common(together[floor->second], shapes).empty()) add(floor->second, shapes);
      }
    }
    for (std::size_t i = 0; i < together.size(); ++i) {
      if (draft_.floors[i].shapes.empty()) draft_.floors[i].shapes = std::move(together[i]);
    }
  }

  std::string name_;
  std::optional<std::string> error_;
  OsmData data_;
  Draft draft_;
  OsmSelection found_;
  std::optional<OsmNodes> nodes_;
  OsmFloors floors_;
  std::vector<OsmArea> areas_;
  std::optional<OsmOutlines> outlines_;
  OsmObstacles obstacles_;
  Site site_;
  OsmPlaces places_{draft_, site_};
  // By area of the site.
  std::vector<OsmUse> uses_;
  std::optional<FloorAreas> byPlace_;
  // By area: its areas of the site.
  std::vector<std::vector<std::size_t>> siteAreas_;
  // Where ways that are drawn go through walls.
  std::set<OsmStop> openings_;
  std::set<OsmStop> doors_;
  // Of entrances.
  std::set<std::string> entrances_;
  // Stands, and the nodes that are drawn there.
  std::vector<std::pair<std::size_t, std::size_t>> joints_;
  std::set<std::size_t> standing_;
  // Made nodes that are those that are drawn.
  std::map<std::size_t, std::size_t> same_;
};

}  // namespace

ReadDraft readOsm(const SourceFiles& source) { return OsmReader(source).read(); }

}  // namespace tern::imports
