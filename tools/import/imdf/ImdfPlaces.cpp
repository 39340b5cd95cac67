#include "tools/import/imdf/ImdfPlaces.hpp"

#include <utility>

#include "tools/import/draft/Categories.hpp"
#include "tools/import/imdf/ImdfShapes.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

Point middleOfShape(const Polygon& shape) {
  Point sum;
  for (const Point at : shape.rings.front()) sum = sum + at;
  return nearestIn(shape, sum * (1 / static_cast<double>(shape.rings.front().size())));
}

}  // namespace

void ImdfPlaces::plan() {
  for (std::size_t i = 0; i < units_.features.size(); ++i) planUnit(i);
  for (const ImdfFeature& amenity : files_.of("amenity")) planAmenity(amenity);
  for (const ImdfFeature& anchor : files_.of("anchor")) anchors_.emplace(anchor.id, &anchor);
  for (const ImdfFeature& occupant : files_.of("occupant")) planOccupant(occupant);
  for (const ImdfFeature& kiosk : files_.of("kiosk")) planKiosk(kiosk);
  planOpenings();
}

// What has a name is somewhere to go; toilets are, without one.
void ImdfPlaces::planUnit(std::size_t index) {
  const ImdfFeature& unit = *units_.features[index];
  const Names names = unit.label("name");
  const bool isToilets = units_.kinds[index] == AreaKind::toilets;
  if (names.empty() && !isToilets) return;
  const SiteArea& area = site_.areas[index];
  const auto shown = imdfPoint(draft_.plane, (*unit.properties)["display_point"]);
  plan(unit, unit.category(), isToilets ? Names() : names, area.floor,
       shown.value_or(middleOfShape(area.shapes.front())), index);
}

void ImdfPlaces::planAmenity(const ImdfFeature& amenity) {
  const auto at = imdfPoint(draft_.plane, *amenity.geometry);
  std::optional<std::size_t> unit;
  for (const Value& id : (*amenity.properties)["unit_ids"].items()) {
    const auto found = units_.byId.find(idOf(id));
    if (found == units_.byId.end()) continue;
    unit = found->second;
    break;
  }
  if (!at) {
    draft_.oddities.tell(amenity.id, "noPlace", "It has no point near the site.");
  } else if (!unit) {
    draft_.oddities.tell(amenity.id, "dangling", "It names no unit that is there.");
  } else {
    plan(amenity, amenity.category(), amenity.label("name"), site_.areas[*unit].floor, *at, unit,
         true);
  }
}

void ImdfPlaces::planOccupant(const ImdfFeature& occupant) {
  const auto anchor = anchors_.find(occupant.idOf("anchor_id"));
  if (anchor == anchors_.end()) {
    draft_.oddities.tell(occupant.id, "dangling", "Its anchor is not there.");
    return;
  }
  const auto at = imdfPoint(draft_.plane, *anchor->second->geometry);
  const auto unit = units_.byId.find(anchor->second->idOf("unit_id"));
  const Names names = occupant.label("name");
  if (!at || unit == units_.byId.end()) {
    draft_.oddities.tell(occupant.id, "dangling", "Its anchor lies in no unit that is there.");
  } else if (names.empty()) {
    draft_.oddities.tell(occupant.id, "noName", "It has no name.");
  } else {
    plan(occupant, occupant.category(), names, site_.areas[unit->second].floor, *at, unit->second);
  }
}

// One stands in front of it.
void ImdfPlaces::planKiosk(const ImdfFeature& kiosk) {
  const Names names = kiosk.label("name");
  const auto floor = floors_.find(kiosk.idOf("level_id"));
  const auto shapes = imdfPolygons(draft_.plane, *kiosk.geometry);
  if (names.empty() || floor == floors_.end() || shapes.empty()) return;
  const Polygon outline{{shapes.front().rings.front()}};
  plan(kiosk, "kiosk", names, floor->second, middleOfShape(outline), std::nullopt);
}

// An entrance, a gate: what is called something is somewhere to go.
void ImdfPlaces::planOpenings() {
  std::map<std::string_view, std::vector<std::size_t>> doors;
  for (std::size_t i = 0; i < site_.doors.size(); ++i) doors[site_.doors[i].id].push_back(i);
  for (const ImdfFeature& opening : files_.of("opening")) {
    const Names names = opening.label("name");
    const auto own = doors.find(opening.id);
    if (names.empty() || own == doors.end()) continue;
    const SiteDoor& door = site_.doors[own->second.front()];
    planned_.push_back({&opening, "entry", names, door.floor,
                        between(door.line.front(), door.line.back(), 0.5), std::nullopt, 0, false,
                        own->second});
  }
}

void ImdfPlaces::plan(const ImdfFeature& feature, std::string_view category, Names names,
                      std::size_t floor, Point at, std::optional<std::size_t> unit,
                      bool isAmenity) {
  planned_.push_back({&feature, std::string(category.empty() ? "unspecified" : category),
                      std::move(names), floor, at, unit, site_.stands.size(), isAmenity});
  if (isEnteredByDoor(unit)) return;
  site_.stands.push_back({feature.id, floor, at});
}

// In a hall one goes up to the place itself, of a room one comes as far as in at its door.
bool ImdfPlaces::isEnteredByDoor(std::optional<std::size_t> unit) const {
  return unit && units_.kinds[*unit] != AreaKind::way && units_.kinds[*unit] != AreaKind::outdoors;
}

std::vector<std::size_t> ImdfPlaces::nodesOf(const Planned& place, const MadeWays& made) const {
  if (isEnteredByDoor(place.unit)) return made.insideDoors[*place.unit];
  std::vector<std::size_t> nodes;
  for (const std::size_t door : place.doors) {
    nodes.insert(nodes.end(), made.ofDoor[door].begin(), made.ofDoor[door].end());
  }
  if (!place.doors.empty()) return nodes;
  if (const auto node = made.ofStand[place.stand]) nodes.push_back(*node);
  return nodes;
}

void ImdfPlaces::add(const MadeWays& made) {
  for (const Planned& place : planned_) {
    const std::vector<std::size_t> nodes = nodesOf(place, made);
    if (nodes.empty()) {
      draft_.oddities.tell(place.feature->id, "unreached", "No door leads to it.");
      continue;
    }
    if (place.isAmenity) addPlace(place, {}, nodes);
    if (!place.isAmenity || !place.names.empty()) addPlace(place, place.names, nodes);
  }
}

void ImdfPlaces::addPlace(const Planned& place, Names names,
                          const std::vector<std::size_t>& nodes) {
  draft_.places.push_back({place.feature->id, categoryOf(place.category), std::move(names),
                           place.floor, place.at, nodes});
}

std::size_t ImdfPlaces::categoryOf(const std::string& category) {
  const auto [known, isNew] = categories_.try_emplace(category, draft_.categories.size());
  if (isNew) draft_.categories.push_back({category, namesOfCategory(category)});
  return known->second;
}

}  // namespace tern::imports
