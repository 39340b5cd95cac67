#include "tools/import/imdf/ImdfReader.hpp"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/import/draft/Categories.hpp"
#include "tools/import/draft/EmptyFloors.hpp"
#include "tools/import/draft/MiddleValue.hpp"
#include "tools/import/imdf/ImdfCodes.hpp"
#include "tools/import/imdf/ImdfFiles.hpp"
#include "tools/import/source/GeoJson.hpp"
#include "tools/import/ways/BoxGrid.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/Shapes.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

namespace {

// Farther from the middle of the site is another place.
constexpr double mostSiteMetres = 30'000;
constexpr double mostLevel = 1'000;

// A place whose node is known when the ways are made.
struct PlannedStand {
  const ImdfFeature* feature;
  std::string category;
  Names names;
  std::size_t floor;
  Point at;
  // The unit that it is in, where it is named.
  std::optional<std::size_t> unit;
  std::size_t stand;
};

class ImdfReader {
 public:
  explicit ImdfReader(const SourceFiles& source)
      : name_(source.name()), files_(source, draft_.oddities) {}

  ReadDraft read() {
    if (!findMiddle()) return {{}, "no level of it has a shape on the globe"};
    readHead();
    readLevels();
    readUnits();
    if (site_.areas.empty()) return {{}, "no unit of it lies on a level and can be walked in"};
    cutObstacles();
    cutSmallerUnits();
    readOpenings();
    readRelationships();
    planPlaces();
    const MadeWays made = makeWays(site_, draft_);
    addPlaces(made);
    readDetails();
    tellTheRest();
    dropEmptyFloors(draft_);
    return {std::move(draft_), std::nullopt};
  }

 private:
  void tell(const ImdfFeature& feature, std::string_view kind, std::string_view why) {
    draft_.oddities.tell(feature.id, kind, std::string(why));
  }

  // The plane touches the globe amid the units, wherever a stray one lies.
  bool findMiddle() {
    std::vector<double> longitudes;
    std::vector<double> latitudes;
    for (const char* const type : {"unit", "level"}) {
      for (const ImdfFeature& feature : files_.of(type)) {
        const auto polygons = globePolygons(*feature.geometry, PlaneSystem());
        if (!polygons) continue;
        for (const LonLat at : polygons->front().front()) {
          longitudes.push_back(at.longitude);
          latitudes.push_back(at.latitude);
        }
      }
      if (!longitudes.empty()) break;
    }
    if (longitudes.empty()) return false;
    draft_.plane = LocalPlane({middleValue(longitudes), middleValue(latitudes)});
    return true;
  }

  void readHead() {
    draft_.id = name_;
    draft_.stamp = files_.stamp();
    draft_.language = languageOfMost();
    for (const ImdfFeature& venue : files_.of("venue")) {
      if (draft_.names.empty()) draft_.names = venue.label("name");
      if (draft_.id == name_) draft_.id = venue.id;
    }
    if (draft_.names.empty()) draft_.names = {{"", name_}};
    for (const ImdfFeature& building : files_.of("building")) {
      buildings_.emplace(building.id, draft_.buildings.size());
      draft_.buildings.push_back({building.id, building.label("name"), addressOf(building)});
    }
  }

  // That of most names of units and levels, else the manifest's.
  std::string languageOfMost() {
    std::map<std::string, int> counts;
    for (const char* const type : {"unit", "level", "occupant", "amenity", "venue"}) {
      for (const ImdfFeature& feature : files_.of(type)) {
        for (const Name& name : feature.label("name")) ++counts[name.language];
      }
    }
    counts.erase("");
    if (counts.empty()) return files_.language().empty() ? "en" : files_.language();
    return std::ranges::max_element(counts, {}, [](const auto& count) { return count.second; })
        ->first;
  }

  std::string addressOf(const ImdfFeature& feature) {
    const std::string_view id = feature.text("address_id");
    if (id.empty()) return {};
    for (const ImdfFeature& address : files_.of("address")) {
      if (address.id != id) continue;
      std::string line;
      for (const std::string_view key : {"address", "unit", "locality", "postal_code"}) {
        const std::string_view part = address.text(key);
        if (!part.empty()) line += (line.empty() ? "" : ", ") + std::string(part);
      }
      return line;
    }
    tell(feature, "dangling", "Its address is not there.");
    return {};
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
      const auto building = buildings_.find(id.text());
      if (building != buildings_.end()) return building->second;
      tell(level, "dangling", "It names a building that is not there.");
    }
    const auto [own, isNew] = buildings_.try_emplace(name_, draft_.buildings.size());
    if (isNew) draft_.buildings.push_back({name_, draft_.names, {}});
    return own->second;
  }

  bool isNearSite(Point at) const { return lengthOf(at) <= mostSiteMetres; }

  Line lineOnPlane(const GlobeLine& line) const {
    Line points;
    for (const LonLat at : line) points.push_back(draft_.plane.at(at));
    return points;
  }

  // Empty, and told of, where there is none near the site.
  std::vector<Polygon> shapesOf(const ImdfFeature& feature) {
    const auto globe = globePolygons(*feature.geometry, PlaneSystem());
    std::vector<Polygon> shapes;
    if (globe) {
      for (const GlobePolygon& polygon : *globe) {
        Polygon shape;
        for (const GlobeLine& ring : polygon) shape.rings.push_back(lineOnPlane(ring));
        shapes.push_back(std::move(shape));
      }
    }
    const bool isGood = !shapes.empty() && std::ranges::all_of(shapes, [&](const Polygon& shape) {
      return std::ranges::all_of(shape.rings.front(), [&](Point at) { return isNearSite(at); });
    });
    if (isGood) return shapes;
    tell(feature, "noShape", "It has no polygon near the site.");
    return {};
  }

  std::optional<Point> pointOf(const Value& geometry) const {
    const auto globe = globePoint(geometry, PlaneSystem());
    if (!globe) return std::nullopt;
    const Point at = draft_.plane.at(*globe);
    return isNearSite(at) ? std::optional(at) : std::nullopt;
  }

  // None, and told of, for one that is not there.
  std::optional<std::size_t> floorOf(const ImdfFeature& feature) {
    const auto floor = floors_.find(feature.text("level_id"));
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
      const UnitMeaning meaning = unitMeaningOf(unit.text("category"), isStepFree(unit));
      draft_.areas.push_back({unit.id, *floor, meaning.area, unit.label("name"), shapes});
      if (!meaning.isWalked) {
        obstacles_[*floor].insert(obstacles_[*floor].end(), shapes.begin(), shapes.end());
        continue;
      }
      units_.emplace(unit.id, site_.areas.size());
      unitFeatures_.push_back(&unit);
      unitKinds_.push_back(meaning.area);
      site_.areas.push_back({unit.id, *floor, meaning.link, meaning.hasSteps, shapes});
    }
  }

  // Nobody walks through kiosks and fixtures, nor where the floor is open.
  void cutObstacles() {
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
    for (const auto& [floor, obstacles] : obstacles_) cutFrom(floor, obstacles);
  }

  void cutFrom(std::size_t floor, const Shapes& obstacles) {
    std::vector<Box> boxes;
    for (const Polygon& obstacle : obstacles) boxes.push_back(boxOf(obstacle));
    const BoxGrid grid(std::move(boxes));
    for (SiteArea& area : site_.areas) {
      if (area.floor != floor) continue;
      Shapes here;
      for (const std::uint32_t i : grid.about(boxOfAll(area.shapes))) {
        here.push_back(obstacles[i]);
      }
      if (here.empty()) continue;
      Shapes left = cut(repaired(area.shapes), repaired(here));
      if (!left.empty()) area.shapes = std::move(left);
    }
  }

  // Of units over each other the smaller one has walls: stairs on a stage, a booth in a hall.
  void cutSmallerUnits() {
    std::vector<Box> boxes;
    std::vector<double> sizes;
    for (const SiteArea& area : site_.areas) {
      boxes.push_back(boxOfAll(area.shapes));
      sizes.push_back(0);
      for (const Polygon& shape : area.shapes) sizes.back() += areaOf(shape);
    }
    const BoxGrid grid(boxes);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      SiteArea& area = site_.areas[i];
      Shapes smaller;
      for (const std::uint32_t other : grid.about(boxes[i])) {
        const SiteArea& over = site_.areas[other];
        if (over.floor != area.floor || sizes[other] >= sizes[i]) continue;
        smaller.insert(smaller.end(), over.shapes.begin(), over.shapes.end());
      }
      if (smaller.empty()) continue;
      const Shapes whole = repaired(area.shapes);
      const Shapes others = repaired(smaller);
      if (common(whole, others).empty()) continue;
      Shapes left = cut(whole, others);
      if (!left.empty()) area.shapes = std::move(left);
    }
  }

  void readOpenings() {
    for (const ImdfFeature& opening : files_.of("opening")) {
      const auto floor = floorOf(opening);
      const auto globe = globeLine(*opening.geometry, PlaneSystem());
      if (!floor) continue;
      Line line = globe ? lineOnPlane(*globe) : Line();
      if (line.empty() || !std::ranges::all_of(line, [&](Point at) { return isNearSite(at); })) {
        tell(opening, "noShape", "It has no line near the site.");
        continue;
      }
      draft_.doors.push_back({*floor, line});
      site_.doors.push_back({opening.id, *floor, std::move(line)});
    }
  }

  std::optional<std::size_t> unitOf(const Value& reference) const {
    const auto unit = units_.find(reference["id"].text());
    return unit == units_.end() ? std::nullopt : std::optional(unit->second);
  }

  // What leads from a unit to one of another level. Between units of one level openings do.
  void readRelationships() {
    for (const ImdfFeature& relation : files_.of("relationship")) {
      const auto from = unitOf((*relation.properties)["origin"]);
      const auto to = unitOf((*relation.properties)["destination"]);
      if (!from || !to) {
        tell(relation, "dangling", "It does not lead from one unit that is there to another.");
        continue;
      }
      const bool isDirected = relation.text("direction") == "directed";
      if (site_.areas[*from].floor == site_.areas[*to].floor) {
        if (isDirected) {
          tell(relation, "one-way",
               "A venue knows no one-way on one floor; it is walked both ways.");
        }
        continue;
      }
      LinkKind kind = climbOf(relation.text("category"));
      if (kind == LinkKind::walkway) kind = site_.areas[*from].kind;
      if (kind == LinkKind::lift) kind = liftBetween(*from, *to);
      site_.movers.push_back(
          {relation.id, *from, *to, kind, isDirected ? Direction::forward : Direction::both});
    }
  }

  LinkKind liftBetween(std::size_t from, std::size_t to) const {
    const bool isFree = site_.areas[from].kind == LinkKind::stepFreeLift &&
                        site_.areas[to].kind == LinkKind::stepFreeLift;
    return isFree ? LinkKind::stepFreeLift : LinkKind::lift;
  }

  void planPlaces() {
    for (std::size_t i = 0; i < unitFeatures_.size(); ++i) planUnit(i);
    for (const ImdfFeature& amenity : files_.of("amenity")) planAmenity(amenity);
    for (const ImdfFeature& anchor : files_.of("anchor")) anchors_.emplace(anchor.id, &anchor);
    for (const ImdfFeature& occupant : files_.of("occupant")) planOccupant(occupant);
    for (const ImdfFeature& kiosk : files_.of("kiosk")) planKiosk(kiosk);
  }

  // What has a name is somewhere to go; toilets are, without one.
  void planUnit(std::size_t index) {
    const ImdfFeature& unit = *unitFeatures_[index];
    const Names names = unit.label("name");
    const bool isToilets = unitKinds_[index] == AreaKind::toilets;
    if (names.empty() && !isToilets) return;
    const SiteArea& area = site_.areas[index];
    const auto shown = pointOf((*unit.properties)["display_point"]);
    plan(unit, unit.text("category"), isToilets ? Names() : names, area.floor,
         shown.value_or(middleOfShape(area.shapes.front())), index);
  }

  static Point middleOfShape(const Polygon& shape) {
    Point sum;
    for (const Point at : shape.rings.front()) sum = sum + at;
    return nearestIn(shape, sum * (1 / static_cast<double>(shape.rings.front().size())));
  }

  void planAmenity(const ImdfFeature& amenity) {
    const auto at = pointOf(*amenity.geometry);
    std::optional<std::size_t> unit;
    for (const Value& id : (*amenity.properties)["unit_ids"].items()) {
      const auto found = units_.find(id.text());
      if (found == units_.end()) continue;
      unit = found->second;
      break;
    }
    if (!at) {
      tell(amenity, "noPlace", "It has no point near the site.");
    } else if (!unit) {
      tell(amenity, "dangling", "It names no unit that is there.");
    } else {
      plan(amenity, amenity.text("category"), {}, site_.areas[*unit].floor, *at, unit);
    }
  }

  void planOccupant(const ImdfFeature& occupant) {
    const auto anchor = anchors_.find(occupant.text("anchor_id"));
    if (anchor == anchors_.end()) {
      tell(occupant, "dangling", "Its anchor is not there.");
      return;
    }
    const auto at = pointOf(*anchor->second->geometry);
    const auto unit = units_.find(anchor->second->text("unit_id"));
    const Names names = occupant.label("name");
    if (!at || unit == units_.end()) {
      tell(occupant, "dangling", "Its anchor lies in no unit that is there.");
    } else if (names.empty()) {
      tell(occupant, "noName", "It has no name.");
    } else {
      plan(occupant, occupant.text("category"), names, site_.areas[unit->second].floor, *at,
           unit->second);
    }
  }

  // One stands in front of it.
  void planKiosk(const ImdfFeature& kiosk) {
    const Names names = kiosk.label("name");
    const auto floor = floors_.find(kiosk.text("level_id"));
    const auto globe = globePolygons(*kiosk.geometry, PlaneSystem());
    if (names.empty() || floor == floors_.end() || !globe) return;
    const Polygon shape{{lineOnPlane(globe->front().front())}};
    plan(kiosk, "kiosk", names, floor->second, middleOfShape(shape), std::nullopt);
  }

  void plan(const ImdfFeature& feature, std::string_view category, Names names, std::size_t floor,
            Point at, std::optional<std::size_t> unit) {
    planned_.push_back({&feature, std::string(category.empty() ? "unspecified" : category),
                        std::move(names), floor, at, unit, site_.stands.size()});
    if (isEnteredByDoor(unit)) return;
    site_.stands.push_back({feature.id, floor, at});
  }

  // In a hall one goes up to the place itself, of a room one comes as far as in at its door.
  bool isEnteredByDoor(std::optional<std::size_t> unit) const {
    return unit && unitKinds_[*unit] != AreaKind::way && unitKinds_[*unit] != AreaKind::outdoors;
  }

  void addPlaces(const MadeWays& made) {
    for (PlannedStand& place : planned_) {
      std::vector<std::size_t> nodes;
      if (isEnteredByDoor(place.unit)) {
        nodes = made.insideDoors[*place.unit];
      } else if (const auto node = made.ofStand[place.stand]) {
        nodes = {*node};
      }
      if (nodes.empty()) {
        tell(*place.feature, "unreached", "No door leads to it.");
        continue;
      }
      draft_.places.push_back({place.feature->id, categoryOf(place.category),
                               std::move(place.names), place.floor, place.at, std::move(nodes)});
    }
  }

  std::size_t categoryOf(const std::string& category) {
    const auto [known, isNew] = categories_.try_emplace(category, draft_.categories.size());
    if (isNew) draft_.categories.push_back({category, namesOfCategory(category)});
    return known->second;
  }

  void readDetails() {
    for (const ImdfFeature& detail : files_.of("detail")) {
      const auto floor = floorOf(detail);
      if (!floor) continue;
      const Value& geometry = *detail.geometry;
      const bool isOfMany = geometry["type"].text() == "MultiLineString";
      std::vector<Value> parts{geometry};
      if (isOfMany) {
        parts.clear();
        for (const Value& part : geometry["coordinates"].items()) {
          parts.push_back(Value::map({{"type", "LineString"}, {"coordinates", part}}));
        }
      }
      for (const Value& part : parts) {
        const auto line = globeLine(part, PlaneSystem());
        if (line) draft_.walls.push_back({*floor, lineOnPlane(*line)});
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
  std::map<std::string, std::size_t, std::less<>> buildings_;
  std::map<std::string, std::size_t, std::less<>> floors_;
  // By id, and for each area of the site its feature and kind.
  std::map<std::string, std::size_t, std::less<>> units_;
  std::vector<const ImdfFeature*> unitFeatures_;
  std::vector<AreaKind> unitKinds_;
  std::map<std::size_t, Shapes> obstacles_;
  std::map<std::string, const ImdfFeature*, std::less<>> anchors_;
  std::vector<PlannedStand> planned_;
  std::map<std::string, std::size_t> categories_;
};

}  // namespace

ReadDraft readImdf(const SourceFiles& source) { return ImdfReader(source).read(); }

}  // namespace tern::imports
