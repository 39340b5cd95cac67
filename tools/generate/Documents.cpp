#include "tools/generate/Documents.hpp"

#include <array>
#include <utility>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/documents/DocumentText.hpp"
#include "tools/generate/FloorDrawing.hpp"
#include "tools/generate/Icons.hpp"

namespace tern::generate {

using documents::DocumentText;

namespace {

constexpr int metresPerLevel = 5;

// The costs are lengths of walking in pixels, twenty a metre. A lift counts as 45 m of waiting and
// 5 m for each floor, an escalator as 17.5 m and a flight of stairs as 30 m a floor: one floor up
// people take the escalator, several floors up the lift, and the stairs when they are much nearer.
// A change of floor multiplies a weight w by 1 + 100 / (verticalWeight + 1) for each level.
struct PathTypeRow {
  PathKind kind;
  std::string_view name;
  std::string_view description;
  // Usable from this accessibility level on: 0 for a wheelchair, 100 for everybody.
  int accessibility;
  int weight;
  int verticalWeight;
  Icon icon;
};

constexpr std::array<PathTypeRow, 4> pathTypeRows{{
    {PathKind::walk, "Walking", "Level ways, open to everybody", 0, 1, 1, Icon::exit},
    {PathKind::lift, "Lift", "Step-free between all floors", 0, 900, 899, Icon::lift},
    {PathKind::escalator, "Escalator", "Moving stairs, one way each", 50, 250, 249,
     Icon::escalator},
    {PathKind::stairs, "Stairs", "Steps both ways", 100, 500, 499, Icon::stairs},
}};

Value point(Point at) { return Value::list({at.x, at.y}); }

template <class Item>
Value listOf(const Item& items) {
  Value list = Value::list();
  for (const auto& item : items) list.append(item);
  return list;
}

// The phrase in every locale but the first, which the record's own name is in.
template <class NameIn>
Value otherNames(NameIn nameIn) {
  Value names = Value::map();
  for (std::size_t i = 1; i < locales.size(); ++i) names.set(locales[i].code, Value(nameIn(i)));
  return names;
}

Value otherNames(const Phrase& phrase) {
  return otherNames([&](std::size_t locale) { return phrase[locale]; });
}

// Degrees.
struct GlobePoint {
  double latitude;
  double longitude;
};

GlobePoint globePointOf(const VenueModel& venue, Point at) {
  const City& city = cities()[static_cast<std::size_t>(venue.city)];
  const std::int64_t x = at.x + venue.eastPx;
  const std::int64_t south = std::int64_t{at.y} * mmPerPixel * latitudeE9PerMetre / 100'000;
  const std::int64_t east = x * mmPerPixel * city.longitudeE9PerMetre / 100'000;
  return {static_cast<double>(city.latitudeE7 - south) / 1e7,
          static_cast<double>(city.longitudeE7 + east) / 1e7};
}

// A point of the site, latitude first.
Value onGlobe(const VenueModel& venue, Point at) {
  const GlobePoint point = globePointOf(venue, at);
  return Value::list({point.latitude, point.longitude});
}

// Where a waypoint lies: on its map, or on the globe, longitude first.
Value placeOf(const VenueModel& venue, Point at) {
  if (!venue.isJoined()) return point(at);
  const GlobePoint place = globePointOf(venue, at);
  return Value::list({place.longitude, place.latitude});
}

Value corners(const VenueModel& venue, const Box& box) {
  return Value::map({{"topLeft", onGlobe(venue, {box.left, box.top})},
                     {"bottomRight", onGlobe(venue, {box.right, box.bottom})}});
}

Value siteCorners(const VenueModel& venue) {
  return corners(venue, {0, 0, venue.site.widthPx, venue.site.heightPx});
}

// Gathers waypoints floor by floor into the form in which records say where they are.
class Locations {
 public:
  explicit Locations(const VenueModel& venue) : venue_(venue) {}

  void add(NodeRef ref) {
    if (ref.node < 0) return;
    if (ref.floor != floor_) close();
    floor_ = ref.floor;
    ids_.append(venue_.waypointId(ref));
  }

  Value finished() {
    close();
    return std::move(locations_);
  }

 private:
  void close() {
    if (ids_.size() == 0) return;
    const std::int64_t map = venue_.floors[static_cast<std::size_t>(floor_)].mapId;
    locations_.append(
        Value::map({{"mapId", map}, {"waypointIds", std::exchange(ids_, Value::list())}}));
  }

  const VenueModel& venue_;
  int floor_ = -1;
  Value ids_ = Value::list();
  Value locations_ = Value::list();
};

// Calls `visit(NodeRef, const Node&)` for every waypoint of the venue.
template <class Visit>
void forEachNode(const VenueModel& venue, Visit visit) {
  for (std::size_t floor = 0; floor < venue.floors.size(); ++floor) {
    const std::vector<Node>& nodes = venue.floors[floor].graph.nodes;
    for (std::size_t node = 0; node < nodes.size(); ++node) {
      visit(NodeRef{static_cast<int>(floor), static_cast<int>(node)}, nodes[node]);
    }
  }
}

// The amenity at a waypoint, or -1.
int amenityAt(const FloorModel& floor, const Node& node) {
  if (node.kind == NodeKind::entrance) return static_cast<int>(Amenity::exit);
  if (node.kind != NodeKind::amenity) return -1;
  switch (floor.plan.rooms[static_cast<std::size_t>(node.room)].kind) {
    case RoomKind::toilets:
      return static_cast<int>(Amenity::toilets);
    case RoomKind::information:
      return static_cast<int>(Amenity::information);
    case RoomKind::cashMachine:
      return static_cast<int>(Amenity::cashMachine);
    default:
      return static_cast<int>(Amenity::babyCare);
  }
}

Value destination(const VenueModel& venue, std::size_t index) {
  const Shop& shop = venue.shops[index];
  const CategoryWords& words = wordsOf(shop.name.category);
  const FloorModel& floor = venue.floors[static_cast<std::size_t>(shop.doors.front().floor)];
  Locations locations(venue);
  for (const NodeRef& door : shop.doors) locations.add(door);
  const auto nameIn = [&](std::size_t locale) { return shop.name.full(locale); };
  return Value::map(
      {{"id", static_cast<std::int64_t>(index + 1)},
       {"externalId", "shop-" + shop.unit},
       {"unitNumber", shop.unit},
       {"name", shop.name.full(0)},
       {"description", std::string(words.name[0]) + ", " + buildingName(floor.building) + ", " +
                           floorName(floor.level)},
       {"localeCode", locales[0].code},
       {"extensors", Value::map({{"category", words.name[0]}, {"names", otherNames(nameIn)}})},
       {"locations", locations.finished()},
       {"categoryIds", Value::list({idOf(shop.name.category)})},
       {"keywords", listOf(words.keywords)},
       {"tags", Value::list({words.keywords[0]})},
       {"status", 1}});
}

void writeDestinations(DocumentText& text, const VenueModel& venue) {
  text.beginBatch("destinations");
  for (std::size_t i = 0; i < venue.shops.size(); ++i) text.item(destination(venue, i));
  text.endBatch();
}

void writeAmenities(DocumentText& text, const VenueModel& venue) {
  std::vector<Locations> locations(amenityCount, Locations(venue));
  forEachNode(venue, [&](NodeRef ref, const Node& node) {
    const int amenity = amenityAt(venue.floors[static_cast<std::size_t>(ref.floor)], node);
    if (amenity >= 0) locations[static_cast<std::size_t>(amenity)].add(ref);
  });
  text.beginBatch("amenities");
  for (int i = 0; i < amenityCount; ++i) {
    const auto amenity = static_cast<Amenity>(i);
    const AmenityWords& words = wordsOf(amenity);
    text.item(Value::map({{"id", idOf(amenity)},
                          {"externalId", "amenity-" + std::to_string(idOf(amenity))},
                          {"name", words.name[0]},
                          {"status", 1},
                          {"displayOrder", idOf(amenity)},
                          {"extensors", Value::map({{"names", otherNames(words.name)}})},
                          {"locations", locations[static_cast<std::size_t>(i)].finished()},
                          {"keywords", listOf(words.keywords)},
                          {"svg", iconSvg(iconOf(amenity))}}));
  }
  text.endBatch();
}

NodeKind nodeKindOf(PathKind kind) {
  if (kind == PathKind::lift) return NodeKind::lift;
  return kind == PathKind::stairs ? NodeKind::stairs : NodeKind::escalator;
}

Value pathTypeLocations(const VenueModel& venue, PathKind kind) {
  Locations locations(venue);
  if (kind != PathKind::walk) {
    forEachNode(venue, [&](NodeRef ref, const Node& node) {
      if (node.kind == nodeKindOf(kind)) locations.add(ref);
    });
  }
  return locations.finished();
}

// Walking costs its length, which is counted in metres among joined venues.
int weightOf(const VenueModel& venue, const PathTypeRow& row) {
  return venue.isJoined() && row.kind == PathKind::walk ? metrePx * row.weight : row.weight;
}

void writePathTypes(DocumentText& text, const VenueModel& venue) {
  text.beginBatch("pathTypes");
  for (const PathTypeRow& row : pathTypeRows) {
    const int id = static_cast<int>(row.kind);
    Value record = Value::map({{"id", id},
                               {"externalId", "path-type-" + std::to_string(id)},
                               {"name", row.name},
                               {"description", row.description},
                               {"accessibility", row.accessibility},
                               {"weight", weightOf(venue, row)},
                               {"verticalWeight", row.verticalWeight},
                               {"direction", 0},
                               {"locations", pathTypeLocations(venue, row.kind)}});
    if (row.kind != PathKind::walk) record.set("svg", iconSvg(row.icon));
    text.item(record);
  }
  text.endBatch();
}

Value labelInstance(int id, std::string_view name, std::int64_t mapId, Point at, bool allLevels) {
  return Value::map({{"id", id},
                     {"externalId", "label-" + std::to_string(id)},
                     {"name", name},
                     {"mapId", mapId},
                     {"position", point(at)},
                     {"scale", Value::list({1, 1})},
                     {"skew", Value::list({0, 0})},
                     {"trans", Value::list({0, 0})},
                     {"rotation", 0},
                     {"allLevels", allLevels ? 1 : 0}});
}

Value mapLabel(int id, std::string_view name, Value instances) {
  return Value::map({{"id", id},
                     {"externalId", "map-label-" + std::to_string(id)},
                     {"name", name},
                     {"mapLabelInstances", Value::map({{"items", std::move(instances)}})},
                     {"status", 1}});
}

std::string northArrow() {
  drawing::SvgText svg(iconSizePx, iconSizePx);
  svg.shape({iconSizePx / 2, 6}, "l16 52l-16 -12l-16 12z", "fill=\"#6c7681\"");
  return svg.finished();
}

// The name of each building on each of its floors, and an arrow to the north on all of them.
void writeMapLabels(DocumentText& text, const VenueModel& venue) {
  text.beginBatch("mapLabels");
  int instanceId = 1;
  for (const BuildingPlan& building : venue.site.buildings) {
    const std::string name = buildingName(building.index);
    Value instances = Value::list();
    for (const FloorModel& floor : venue.floors) {
      if (floor.building != building.index) continue;
      instances.append(
          labelInstance(instanceId++, name, floor.mapId, building.footprint.centre(), false));
    }
    text.item(mapLabel(building.index + 1, name, std::move(instances)));
  }
  const Point corner{venue.site.widthPx - iconSizePx, venue.site.heightPx - iconSizePx};
  Value arrow = mapLabel(
      static_cast<int>(venue.site.buildings.size()) + 1, "North",
      Value::list({labelInstance(instanceId, "North", venue.floors.front().mapId, corner, true)}));
  arrow.set("svg", northArrow());
  text.item(arrow);
  text.endBatch();
}

std::string addressOf(const VenueModel& venue, const BuildingPlan& building) {
  const City& city = cities()[static_cast<std::size_t>(venue.city)];
  return std::string(city.street) + " " + std::to_string(2 * building.index + 1) + ", " +
         std::string(city.name);
}

// The floor that one comes in on.
std::int64_t groundFloorId(const VenueModel& venue, int building) {
  std::int64_t id = 0;
  for (const FloorModel& floor : venue.floors) {
    if (floor.building == building && floor.level == 0) id = floor.floorId;
  }
  return id;
}

// The fields that the venue's and the building's own document have in common.
Value buildingHead(const VenueModel& venue, const BuildingPlan& building) {
  return Value::map({{"id", building.index + 1},
                     {"externalId", "building-" + buildingLetter(building.index)},
                     {"name", buildingName(building.index)},
                     {"venueId", venue.options.venue},
                     {"customerId", venue.options.customer},
                     {"address", addressOf(venue, building)},
                     {"description", std::to_string(building.floors) + " floors of shops"},
                     {"defaultFloorId", groundFloorId(venue, building.index)},
                     {"coordinates", corners(venue, building.footprint)}});
}

void writeBuildings(DocumentText& text, const VenueModel& venue) {
  text.beginMap("buildings");
  text.field("defaultId", 1);
  Value items = Value::list();
  for (const BuildingPlan& building : venue.site.buildings) {
    items.append(buildingHead(venue, building));
  }
  text.field("items", items);
  text.endMap();
}

Value venueExtensors(const VenueModel& venue) {
  Value categories = Value::list();
  for (int i = 0; i < categoryCount; ++i) {
    const auto category = static_cast<Category>(i);
    const Phrase& name = wordsOf(category).name;
    categories.append(
        Value::map({{"id", idOf(category)}, {"name", name[0]}, {"names", otherNames(name)}}));
  }
  return Value::map({{"city", cities()[static_cast<std::size_t>(venue.city)].name},
                     {"categories", std::move(categories)}});
}

// An exit that leads to another venue names it, and the waypoint there.
std::string waypointName(const VenueModel& venue, const FloorModel& floor, NodeRef ref) {
  for (const VenueExit& exit : venue.exits) {
    if (exit.at.floor != ref.floor || exit.at.node != ref.node) continue;
    return std::to_string(exit.venue) + ":" + std::to_string(exit.waypoint);
  }
  const Node& node = floor.graph.nodes[static_cast<std::size_t>(ref.node)];
  if (node.kind == NodeKind::entrance) return "Exit";
  std::string number = std::to_string(ref.node + 1);
  if (number.size() < 3) number.insert(0, 3 - number.size(), '0');
  return floor.code + "-" + number;
}

Value waypoint(const VenueModel& venue, const FloorModel& floor, NodeRef ref) {
  const Node& node = floor.graph.nodes[static_cast<std::size_t>(ref.node)];
  Value record = Value::map({{"id", venue.waypointId(ref)},
                             {"externalId", waypointName(venue, floor, ref)},
                             {"mapId", floor.mapId},
                             {"coordinates", placeOf(venue, node.at)}});
  Value destinations = Value::list();
  Value amenities = Value::list();
  if (node.kind == NodeKind::shop) {
    const int shop = floor.plan.rooms[static_cast<std::size_t>(node.room)].shop;
    record.set("unitNumber", venue.shops[static_cast<std::size_t>(shop)].unit);
    destinations.append(shop + 1);
  }
  const int amenity = amenityAt(floor, node);
  if (amenity >= 0) amenities.append(idOf(static_cast<Amenity>(amenity)));
  if (destinations.size() + amenities.size() > 0) {
    record.set("associations", Value::map({{"destinations", std::move(destinations)},
                                           {"amenities", std::move(amenities)}}));
  }
  record.set("status", 1);
  return record;
}

Value path(std::int64_t id, const std::string& externalId, std::string_view name, PathKind kind,
           int direction, std::int64_t from, std::int64_t to) {
  return Value::map({{"id", id},
                     {"externalId", externalId},
                     {"name", name},
                     {"pathTypeId", static_cast<int>(kind)},
                     {"direction", direction},
                     {"waypointIds", Value::list({from, to})},
                     {"status", 1}});
}

void writePaths(DocumentText& text, const VenueModel& venue, int floorIndex) {
  const FloorModel& floor = venue.floors[static_cast<std::size_t>(floorIndex)];
  std::int64_t number = 0;
  const auto write = [&](std::string_view name, PathKind kind, int direction, NodeRef from,
                         NodeRef to) {
    ++number;
    text.item(path(floor.mapId * venue.idsPerMap + number,
                   floor.code + "-path-" + std::to_string(number), name, kind, direction,
                   venue.waypointId(from), venue.waypointId(to)));
  };
  text.beginBatch("paths");
  for (const Link& link : floor.graph.links) {
    write(link.name, PathKind::walk, 0, {floorIndex, link.from}, {floorIndex, link.to});
  }
  for (const VenuePath& way : floor.paths)
    write(way.name, way.kind, way.direction, way.from, way.to);
  text.endBatch();
}

void writeMap(DocumentText& text, const VenueModel& venue, int floorIndex) {
  const FloorModel& floor = venue.floors[static_cast<std::size_t>(floorIndex)];
  text.beginMap("map");
  text.field("id", floor.mapId);
  text.field("externalId", "map-" + floor.code);
  text.field("svg", drawFloor(venue, floor));
  text.field("mmPerPixel", mmPerPixel);
  text.field("scale", Value::list({1, 1}));
  text.field("skew", Value::list({0, 0}));
  text.field("trans", Value::list({0, 0}));
  text.beginBatch("waypoints");
  for (std::size_t i = 0; i < floor.graph.nodes.size(); ++i) {
    text.item(waypoint(venue, floor, {floorIndex, static_cast<int>(i)}));
  }
  text.endBatch();
  writePaths(text, venue, floorIndex);
  text.beginBatch("uris");
  text.endBatch();
  text.endMap();
}

void writeFloor(DocumentText& text, const VenueModel& venue, int floorIndex) {
  const FloorModel& floor = venue.floors[static_cast<std::size_t>(floorIndex)];
  text.beginMap();
  text.field("id", floor.floorId);
  text.field("externalId", "floor-" + floor.code);
  text.field("buildingId", floor.building + 1);
  text.field("level", floor.level);
  text.field("preference", 0);
  text.field("elevation", floor.level * metresPerLevel);
  text.field("name", floorName(floor.level));
  text.field("shortName", shortFloorName(floor.level));
  writeMap(text, venue, floorIndex);
  text.endMap();
}

Value venueHead(const VenueModel& venue) {
  const Value globe = siteCorners(venue);
  const auto topLeft = globe["topLeft"].items();
  const auto bottomRight = globe["bottomRight"].items();
  return Value::map(
      {{"id", venue.options.venue},
       {"externalId", "venue-" + std::to_string(venue.options.venue)},
       {"name", venue.name},
       {"mapId", venue.floors.front().mapId},
       {"coordinates", globe},
       {"bbox", Value::list({topLeft[1], bottomRight[0], bottomRight[1], topLeft[0]})},
       {"status", 1},
       {"customerId", venue.options.customer}});
}

constexpr std::string_view mapTemplateId = "default";

}  // namespace

std::string customerDocument(std::span<const VenueModel> venues) {
  const VenueModel& first = venues.front();
  DocumentText text;
  text.beginMap();
  text.field("id", first.options.customer);
  text.field("name", first.name + " Properties");
  text.field("generatedAt", first.generatedAt);
  text.beginBatch("venues");
  for (const VenueModel& venue : venues) text.item(venueHead(venue));
  text.endBatch();
  text.endMap();
  return text.finished();
}

std::string localesDocument() {
  DocumentText text;
  text.beginMap();
  Value items = Value::list();
  for (std::size_t i = 0; i < locales.size(); ++i) {
    items.append(Value::map({{"id", static_cast<std::int64_t>(i + 1)},
                             {"externalId", locales[i].code},
                             {"name", locales[i].name},
                             {"localeCode", locales[i].code}}));
  }
  text.field("items", items);
  text.endMap();
  return text.finished();
}

std::string venueDocument(const VenueModel& venue) {
  DocumentText text;
  text.beginMap();
  text.field("id", venue.options.venue);
  text.field("externalId", "venue-" + std::to_string(venue.options.venue));
  text.field("name", venue.name);
  text.field("coordinates", siteCorners(venue));
  text.field("status", 1);
  text.field("customerId", venue.options.customer);
  text.field("generatedAt", venue.generatedAt);
  text.field("labelType", 0);
  text.field("clustering", 0);
  text.field("defaultMapTemplateId", mapTemplateId);
  text.field("extensors", venueExtensors(venue));
  writeBuildings(text, venue);
  writePathTypes(text, venue);
  writeAmenities(text, venue);
  writeMapLabels(text, venue);
  writeDestinations(text, venue);
  text.endMap();
  return text.finished();
}

std::string buildingDocument(const VenueModel& venue, int building) {
  DocumentText text;
  text.beginMap();
  const Value head = buildingHead(venue, venue.site.buildings[static_cast<std::size_t>(building)]);
  for (const Value::Entry& entry : head.entries()) text.field(entry.key.text(), entry.value);
  text.field("generatedAt", venue.generatedAt);
  text.beginBatch("floors");
  for (std::size_t i = 0; i < venue.floors.size(); ++i) {
    if (venue.floors[i].building == building) writeFloor(text, venue, static_cast<int>(i));
  }
  text.endBatch();
  text.endMap();
  return text.finished();
}

std::string destinationsDocument(const VenueModel& venue) {
  DocumentText text;
  text.beginMap();
  text.field("venueId", venue.options.venue);
  writeDestinations(text, venue);
  text.endMap();
  return text.finished();
}

documents::MapTemplate mapTemplateOf(const VenueModel& venue) {
  return {.id = mapTemplateId,
          .name = "Calm",
          .background = "#e9eee3",
          .label = "#434b55",
          .generatedAt = venue.generatedAt};
}

}  // namespace tern::generate
