#include "tools/import/imdf/ImdfReader.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/import/draft/EmptyFloors.hpp"
#include "tools/import/imdf/ImdfCodes.hpp"
#include "tools/import/imdf/ImdfCutting.hpp"
#include "tools/import/imdf/ImdfFiles.hpp"
#include "tools/import/imdf/ImdfHead.hpp"
#include "tools/import/imdf/ImdfPlaces.hpp"
#include "tools/import/imdf/ImdfShapes.hpp"
#include "tools/import/imdf/OpenEdges.hpp"
#include "tools/import/ways/MissingDoors.hpp"
#include "tools/import/ways/Shapes.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

namespace {

constexpr double mostLevel = 1'000;

class ImdfReader {
 public:
  explicit ImdfReader(const SourceFiles& source)
      : name_(source.name()), files_(source, draft_.oddities) {}

  ReadDraft read() {
    if (!placeImdf(files_, draft_)) return failed("no level of it has a shape on the globe");
    nameImdf(files_, name_, draft_);
    for (std::size_t i = 0; i < draft_.buildings.size(); ++i) {
      buildings_.emplace(draft_.buildings[i].id, i);
    }
    readLevels();
    readUnits();
    if (site_.areas.empty()) return failed("no unit of it lies on a level and can be walked in");
    readObstacles();
    for (const auto& [floor, obstacles] : obstacles_) cutObstacles(site_, floor, obstacles);
    cutSmallerAreas(site_);
    readOpenings();
    readRelationships();
    addDoorsNotDrawn();
    ImdfPlaces places(files_, floors_, units_, draft_, site_);
    places.plan();
    places.add(makeWays(site_, draft_));
    if (draft_.nodes.empty()) return failed("nothing of it can be walked: it has no doors");
    readDetails();
    tellTheRest();
    dropEmptyFloors(draft_);
    return {std::move(draft_), std::nullopt};
  }

 private:
  // What was told on the way is often why.
  ReadDraft failed(std::string sentence) const {
    const std::vector<Oddity>& told = draft_.oddities.told();
    const auto reason = std::ranges::find(told, false, &Oddity::cameThrough);
    if (reason != told.end()) sentence += "; " + reason->id + ": " + reason->why;
    return {{}, std::move(sentence)};
  }

  void tell(const ImdfFeature& feature, std::string_view kind, std::string_view why) {
    draft_.oddities.tell(feature.id, kind, std::string(why));
  }

  void readLevels() {
    for (const ImdfFeature& level : files_.of("level")) {
      const Value& ordinal = (*level.properties)["ordinal"];
      if (!ordinal.isNumber() || std::abs(ordinal.number()) > mostLevel) {
        tell(level, "noFloor", "The level has no ordinal.");
        continue;
      }
      DraftFloor floor;
      floor.id = level.id;
      floor.building = buildingOf(level);
      floor.ordinal = ordinal.number();
      floor.names = level.label("name");
      floor.shortNames = level.label("short_name");
      if (floor.shortNames.empty()) floor.shortNames = {{"", Value(floor.ordinal).printed()}};
      if (floor.names.empty()) floor.names = floor.shortNames;
      floor.shapes = shapesOf(level);
      floors_.emplace(level.id, draft_.floors.size());
      draft_.floors.push_back(std::move(floor));
    }
  }

  // The first that the level names; what lies outdoors belongs to the venue itself.
  std::size_t buildingOf(const ImdfFeature& level) {
    for (const Value& id : (*level.properties)["building_ids"].items()) {
      const auto building = buildings_.find(idOf(id));
      if (building != buildings_.end()) return building->second;
      tell(level, "dangling", "It names a building that is not there.");
    }
    const auto [own, isNew] = buildings_.try_emplace(name_, draft_.buildings.size());
    if (isNew) draft_.buildings.push_back({name_, draft_.names, {}});
    return own->second;
  }

  // Empty, and told of, where there is none near the site.
  std::vector<Polygon> shapesOf(const ImdfFeature& feature) {
    std::vector<Polygon> shapes = imdfPolygons(draft_.plane, *feature.geometry);
    if (!shapes.empty()) return shapes;
    tell(feature, "noShape", "It has no polygon near the site.");
    return {};
  }

  // None, and told of, for one that is not there.
  std::optional<std::size_t> floorOf(const ImdfFeature& feature) {
    const auto floor = floors_.find(feature.idOf("level_id"));
    if (floor != floors_.end()) return floor->second;
    tell(feature, "dangling", "It names a level that is not there.");
    return std::nullopt;
  }

  static bool isStepFree(const ImdfFeature& unit) {
    return std::ranges::any_of((*unit.properties)["accessibility"].items(),
                               [](const Value& word) { return word.text() == "wheelchair"; });
  }

  void readUnits() {
    for (const ImdfFeature& unit : files_.of("unit")) {
      const auto floor = floorOf(unit);
      const auto shapes = floor ? shapesOf(unit) : std::vector<Polygon>();
      if (shapes.empty()) continue;
      const UnitMeaning meaning = unitMeaningOf(unit.category(), isStepFree(unit));
      draft_.areas.push_back({unit.id, *floor, meaning.area, unit.label("name"), shapes});
      if (!meaning.isWalked) {
        obstacles_[*floor].insert(obstacles_[*floor].end(), shapes.begin(), shapes.end());
        continue;
      }
      units_.byId.emplace(unit.id, site_.areas.size());
      units_.features.push_back(&unit);
      units_.kinds.push_back(meaning.area);
      site_.areas.push_back({unit.id, *floor, meaning.link, meaning.hasSteps, shapes});
    }
  }

  // Nobody walks through kiosks and fixtures, nor where the floor is open.
  void readObstacles() {
    for (const char* const type : {"kiosk", "fixture"}) {
      for (const ImdfFeature& feature : files_.of(type)) {
        const auto floor = floorOf(feature);
        const auto shapes = floor ? shapesOf(feature) : std::vector<Polygon>();
        if (shapes.empty()) continue;
        draft_.areas.push_back(
            {feature.id, *floor, AreaKind::closed, feature.label("name"), shapes});
        obstacles_[*floor].insert(obstacles_[*floor].end(), shapes.begin(), shapes.end());
      }
    }
  }

  void readOpenings() {
    for (const ImdfFeature& opening : files_.of("opening")) {
      const auto floor = floorOf(opening);
      if (!floor) continue;
      std::vector<Line> lines = imdfLines(draft_.plane, *opening.geometry);
      if (lines.empty()) tell(opening, "noShape", "It has no line near the site.");
      for (Line& line : lines) {
        draft_.doors.push_back({*floor, line});
        site_.doors.push_back({opening.id, *floor, std::move(line)});
      }
    }
  }

  // Parts of an open space have no openings between them, and some sources have none at all.
  void addDoorsNotDrawn() {
    std::vector<AreaUse> uses;
    for (std::size_t i = 0; i < site_.areas.size(); ++i) uses.push_back(useOf(i));
    addOpenEdges(site_, uses);
    addMissingDoors(site_, uses, draft_.oddities);
  }

  AreaUse useOf(std::size_t unit) const {
    switch (units_.kinds[unit]) {
      case AreaKind::way:
        return AreaUse::corridor;
      case AreaKind::outdoors:
        return AreaUse::ground;
      case AreaKind::mover:
        return AreaUse::mover;
      case AreaKind::room:
        return units_.features[unit]->label("name").empty() ? AreaUse::passage : AreaUse::ownRoom;
      default:
        return AreaUse::ownRoom;
    }
  }

  std::optional<std::size_t> unitOf(const Value& reference) const {
    const auto unit = units_.byId.find(idOf(reference["id"]));
    return unit == units_.byId.end() ? std::nullopt : std::optional(unit->second);
  }

  // What leads from a unit to others of other levels. Between units of one level openings do.
  void readRelationships() {
    for (const ImdfFeature& relation : files_.of("relationship")) {
      const std::vector<std::size_t> stops = stopsOf(relation);
      if (stops.size() < 2) {
        tell(relation, "dangling", "It does not lead from one unit that is there to another.");
        continue;
      }
      bool climbs = false;
      for (std::size_t i = 1; i < stops.size(); ++i) {
        const std::string number = climbs ? "/" + std::to_string(i) : "";
        climbs |= addMover(relation, number, stops[i - 1], stops[i]);
      }
      if (!climbs && isDirected(relation)) {
        tell(relation, "one-way", "A venue knows no one-way on one floor; it is walked both ways.");
      }
    }
  }

  // Its units from its origin over what lies between to its destination, as far as they are there.
  std::vector<std::size_t> stopsOf(const ImdfFeature& relation) const {
    std::vector<std::size_t> stops;
    const auto add = [&](const Value& reference) {
      const auto unit = unitOf(reference);
      if (unit && (stops.empty() || stops.back() != *unit)) stops.push_back(*unit);
    };
    add((*relation.properties)["origin"]);
    for (const Value& between : (*relation.properties)["intermediary"].items()) add(between);
    add((*relation.properties)["destination"]);
    if (isDirected(relation)) return stops;
    // A lift's stops come in any order.
    std::ranges::stable_sort(stops, {}, [&](std::size_t unit) {
      return draft_.floors[site_.areas[unit].floor].ordinal;
    });
    return stops;
  }

  static bool isDirected(const ImdfFeature& relation) {
    return relation.text("direction") == "directed";
  }

  // False for what stays on its level.
  bool addMover(const ImdfFeature& relation, const std::string& number, std::size_t from,
                std::size_t to) {
    if (site_.areas[from].floor == site_.areas[to].floor) return false;
    LinkKind kind = climbOf(relation.category());
    if (kind == LinkKind::walkway) kind = site_.areas[from].kind;
    if (kind == LinkKind::lift) kind = liftBetween(from, to);
    const Direction direction = isDirected(relation) ? Direction::forward : Direction::both;
    site_.movers.push_back({relation.id + number, from, to, kind, direction});
    return true;
  }

  LinkKind liftBetween(std::size_t from, std::size_t to) const {
    const bool isFree = site_.areas[from].kind == LinkKind::stepFreeLift &&
                        site_.areas[to].kind == LinkKind::stepFreeLift;
    return isFree ? LinkKind::stepFreeLift : LinkKind::lift;
  }

  void readDetails() {
    for (const ImdfFeature& detail : files_.of("detail")) {
      const auto floor = floorOf(detail);
      if (!floor) continue;
      for (Line& line : imdfLines(draft_.plane, *detail.geometry)) {
        draft_.marks.push_back({*floor, std::move(line)});
      }
    }
  }

  void tellTheRest() {
    for (const char* const type : {"footprint", "geofence", "section"}) {
      for (const ImdfFeature& feature : files_.of(type)) {
        tell(feature, "notRead", "A venue has nothing of this kind.");
      }
    }
  }

  std::string name_;
  Draft draft_;
  ImdfFiles files_;
  Site site_;
  ImdfIndex buildings_;
  ImdfIndex floors_;
  ImdfUnits units_;
  std::map<std::size_t, Shapes> obstacles_;
};

}  // namespace

ReadDraft readImdf(const SourceFiles& source) { return ImdfReader(source).read(); }

}  // namespace tern::imports
