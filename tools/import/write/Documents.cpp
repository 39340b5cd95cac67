#include "tools/import/write/Documents.hpp"

#include <map>
#include <set>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/documents/DocumentText.hpp"
#include "tools/import/write/FloorSvg.hpp"
#include "tools/import/write/PathTypes.hpp"

namespace tern::imports {

using documents::DocumentText;

namespace {

Value pair(double first, double second) { return Value::list({first, second}); }

Value corners(const Placement& placement) {
  return Value::map(
      {{"topLeft", pair(placement.topLeft.latitude, placement.topLeft.longitude)},
       {"bottomRight", pair(placement.bottomRight.latitude, placement.bottomRight.longitude)}});
}

// The names in every language but the one that the record's own name is in.
Value otherNames(const Names& names, std::string_view language) {
  const std::string_view own = nameIn(names, language);
  Value others = Value::map();
  bool isOwnSeen = false;
  for (const Name& name : names) {
    if (!isOwnSeen && name.text == own) {
      isOwnSeen = true;
    } else if (!name.language.empty()) {
      others.set(name.language, name.text);
    }
  }
  return others;
}

Value locationsOf(const VenuePlan& venue, const std::vector<std::size_t>& waypoints) {
  std::map<std::size_t, Value> byFloor;
  for (const std::size_t index : waypoints) {
    const PlannedWaypoint& waypoint = venue.waypoints[index];
    byFloor.try_emplace(waypoint.floor, Value::list()).first->second.append(waypoint.id);
  }
  Value locations = Value::list();
  for (auto& [floor, ids] : byFloor) {
    locations.append(Value::map({{"mapId", venue.floors[floor].mapId}, {"waypointIds", ids}}));
  }
  return locations;
}

Value wordList(const std::vector<std::string>& words) {
  Value list = Value::list();
  for (const std::string& word : words) list.append(word);
  return list;
}

Value destination(const VenuePlan& venue, const PlannedPlace& place) {
  const Names& category = venue.draft->categories[place.category].names;
  return Value::map(
      {{"id", place.id},
       {"externalId", place.externalId},
       {"name", nameIn(place.names, venue.language)},
       {"localeCode", venue.language},
       {"extensors", Value::map({{"category", nameIn(category, venue.language)},
                                 {"names", otherNames(place.names, venue.language)}})},
       {"locations", locationsOf(venue, place.waypoints)},
       {"categoryIds", Value::list({venue.categoryIds[place.category]})},
       {"keywords", wordList(place.keywords)},
       {"tags", Value::list()},
       {"status", 1}});
}

void writeDestinations(DocumentText& text, const VenuePlan& venue) {
  text.beginBatch("destinations");
  for (const PlannedPlace& place : venue.destinations) text.item(destination(venue, place));
  text.endBatch();
}

void writeAmenities(DocumentText& text, const VenuePlan& venue) {
  text.beginBatch("amenities");
  for (const PlannedPlace& place : venue.amenities) {
    text.item(
        Value::map({{"id", place.id},
                    {"externalId", place.externalId},
                    {"name", nameIn(place.names, venue.language)},
                    {"status", 1},
                    {"extensors", Value::map({{"names", otherNames(place.names, venue.language)}})},
                    {"locations", locationsOf(venue, place.waypoints)},
                    {"keywords", Value::list()}}));
  }
  text.endBatch();
}

// For each path type that is used the waypoints by which one changes floors with it.
std::map<int, std::vector<std::size_t>> usedPathTypes(const VenuePlan& venue) {
  std::map<int, std::set<std::size_t>> used{{walkwayType, {}}};
  for (const PlannedPath& path : venue.paths) {
    std::set<std::size_t>& ends = used[path.pathType];
    if (venue.waypoints[path.from].floor != venue.waypoints[path.to].floor) {
      ends.insert({path.from, path.to});
    }
  }
  std::map<int, std::vector<std::size_t>> lists;
  for (const auto& [type, ends] : used) lists[type].assign(ends.begin(), ends.end());
  return lists;
}

// A walk costs its length in map units, and so does what stands for metres of walking.
double weightOf(const VenuePlan& venue, const PathTypeRow& row) {
  return row.id == walkwayType ? 1 : row.weightMetres * venue.placement.pxPerMetre();
}

void writePathTypes(DocumentText& text, const VenuePlan& venue) {
  text.beginBatch("pathTypes");
  for (const auto& [type, ends] : usedPathTypes(venue)) {
    const PathTypeRow& row = pathTypeRow(type);
    text.item(Value::map({{"id", row.id},
                          {"externalId", row.externalId},
                          {"name", nameIn(row.names, venue.language)},
                          {"accessibility", row.accessibility},
                          {"weight", weightOf(venue, row)},
                          {"verticalWeight", row.verticalWeight},
                          {"speed", row.speed},
                          {"direction", 0},
                          {"locations", locationsOf(venue, ends)}}));
  }
  text.endBatch();
}

Value labelInstance(const VenuePlan& venue, const PlannedPlace& place, const DraftPlace& at) {
  const Point point = venue.placement.onMap(at.at);
  return Value::map({{"id", place.id},
                     {"externalId", place.externalId},
                     {"name", nameIn(place.names, venue.language)},
                     {"mapId", venue.floors[at.floor].mapId},
                     {"position", pair(point.x, point.y)},
                     {"scale", Value::list({1, 1})},
                     {"skew", Value::list({0, 0})},
                     {"trans", Value::list({0, 0})},
                     {"rotation", 0},
                     {"allLevels", 0}});
}

// The name of each destination, once on each of its floors.
void writeMapLabels(DocumentText& text, const VenuePlan& venue) {
  text.beginBatch("mapLabels");
  for (const PlannedPlace& place : venue.destinations) {
    Value instances = Value::list();
    std::set<std::size_t> floors;
    for (const std::size_t index : place.places) {
      const DraftPlace& at = venue.draft->places[index];
      if (!floors.insert(at.floor).second) continue;
      Value instance = labelInstance(venue, place, at);
      instance.set("id", static_cast<std::int64_t>(instances.size() + 1));
      instances.append(std::move(instance));
    }
    text.item(Value::map({{"id", place.id},
                          {"externalId", place.externalId},
                          {"name", nameIn(place.names, venue.language)},
                          {"mapLabelInstances", Value::map({{"items", std::move(instances)}})},
                          {"status", 1}}));
  }
  text.endBatch();
}

// The floor that one comes in on: level 0, else that which is nearest to it.
std::int64_t defaultFloorId(const VenuePlan& venue, std::size_t building) {
  const PlannedFloor* nearest = nullptr;
  for (std::size_t i = 0; i < venue.floors.size(); ++i) {
    const PlannedFloor& floor = venue.floors[i];
    if (venue.draft->floors[i].building != building) continue;
    if (nearest == nullptr || std::abs(floor.level) < std::abs(nearest->level)) nearest = &floor;
  }
  return nearest == nullptr ? 0 : nearest->id;
}

// The fields that the venue's and the building's own document have in common.
Value buildingHead(const VenuePlan& venue, std::size_t index) {
  const DraftBuilding& building = venue.draft->buildings[index];
  const std::string_view name = nameIn(building.names, venue.language);
  return Value::map({{"id", venue.buildingIds[index]},
                     {"externalId", externalIdOf(building.id)},
                     {"name", name.empty() ? std::string_view(venue.name) : name},
                     {"venueId", venue.id},
                     {"customerId", 1},
                     {"address", building.address},
                     {"defaultFloorId", defaultFloorId(venue, index)},
                     {"coordinates", corners(venue.placement)}});
}

void writeBuildings(DocumentText& text, const VenuePlan& venue) {
  text.beginMap("buildings");
  if (!venue.buildingIds.empty()) text.field("defaultId", venue.buildingIds.front());
  Value items = Value::list();
  for (std::size_t i = 0; i < venue.buildingIds.size(); ++i) items.append(buildingHead(venue, i));
  text.field("items", items);
  text.endMap();
}

Value categories(const VenuePlan& venue) {
  Value list = Value::list();
  for (std::size_t i = 0; i < venue.categoryIds.size(); ++i) {
    const Names& names = venue.draft->categories[i].names;
    list.append(Value::map({{"id", venue.categoryIds[i]},
                            {"name", nameIn(names, venue.language)},
                            {"names", otherNames(names, venue.language)}}));
  }
  return list;
}

Value idList(const std::vector<std::int64_t>& ids) {
  Value list = Value::list();
  for (const std::int64_t id : ids) list.append(id);
  return list;
}

Value waypointRecord(const VenuePlan& venue, const PlannedWaypoint& waypoint) {
  Value record = Value::map({{"id", waypoint.id},
                             {"externalId", waypoint.externalId},
                             {"mapId", venue.floors[waypoint.floor].mapId},
                             {"coordinates", pair(waypoint.at.x, waypoint.at.y)}});
  if (!waypoint.destinations.empty() || !waypoint.amenities.empty()) {
    record.set("associations", Value::map({{"destinations", idList(waypoint.destinations)},
                                           {"amenities", idList(waypoint.amenities)}}));
  }
  record.set("status", 1);
  return record;
}

Value pathRecord(const VenuePlan& venue, const PlannedPath& path) {
  Value record = Value::map(
      {{"id", path.id},
       {"externalId", path.externalId},
       {"pathTypeId", path.pathType},
       {"direction", path.direction},
       {"waypointIds", Value::list({venue.waypoints[path.from].id, venue.waypoints[path.to].id})}});
  const Value& details = venue.draft->links[path.link].details;
  if (details.size() > 0) record.set("extensors", details);
  record.set("status", 1);
  return record;
}

void writeMap(DocumentText& text, const VenuePlan& venue, std::size_t floor) {
  text.beginMap("map");
  text.field("id", venue.floors[floor].mapId);
  text.field("externalId", externalIdOf(venue.draft->floors[floor].id));
  text.field("svg", drawFloor(venue, floor));
  text.field("mmPerPixel", venue.placement.mmPerPixel);
  text.field("scale", Value::list({1, 1}));
  text.field("skew", Value::list({0, 0}));
  text.field("trans", Value::list({0, 0}));
  text.beginBatch("waypoints");
  for (const PlannedWaypoint& waypoint : venue.waypoints) {
    if (waypoint.floor == floor) text.item(waypointRecord(venue, waypoint));
  }
  text.endBatch();
  text.beginBatch("paths");
  for (const PlannedPath& path : venue.paths) {
    if (venue.waypoints[path.from].floor == floor) text.item(pathRecord(venue, path));
  }
  text.endBatch();
  text.beginBatch("uris");
  text.endBatch();
  text.endMap();
}

void writeFloor(DocumentText& text, const VenuePlan& venue, std::size_t index) {
  const DraftFloor& floor = venue.draft->floors[index];
  const PlannedFloor& planned = venue.floors[index];
  text.beginMap();
  text.field("id", planned.id);
  text.field("externalId", externalIdOf(floor.id));
  text.field("buildingId", venue.buildingIds[floor.building]);
  text.field("level", planned.level);
  text.field("preference", 0);
  text.field("name", nameIn(floor.names, venue.language));
  text.field("shortName", nameIn(floor.shortNames, venue.language));
  writeMap(text, venue, index);
  text.endMap();
}

Value venueHead(const VenuePlan& venue) {
  const Placement& placement = venue.placement;
  return Value::map(
      {{"id", venue.id},
       {"externalId", externalIdOf(venue.draft->id)},
       {"name", venue.name},
       {"mapId", venue.floors.front().mapId},
       {"coordinates", corners(placement)},
       {"bbox", Value::list({placement.topLeft.longitude, placement.bottomRight.latitude,
                             placement.bottomRight.longitude, placement.topLeft.latitude})},
       {"status", 1},
       {"customerId", 1}});
}

void collectLanguages(std::set<std::string>& codes, const Names& names) {
  for (const Name& name : names) {
    if (!name.language.empty()) codes.insert(name.language);
  }
}

std::set<std::string> languagesOf(std::span<const VenuePlan> venues) {
  std::set<std::string> codes;
  for (const VenuePlan& venue : venues) {
    codes.insert(venue.language);
    collectLanguages(codes, venue.draft->names);
    for (const DraftFloor& floor : venue.draft->floors) collectLanguages(codes, floor.names);
    for (const DraftCategory& category : venue.draft->categories) {
      collectLanguages(codes, category.names);
    }
    for (const DraftPlace& place : venue.draft->places) collectLanguages(codes, place.names);
  }
  codes.erase("");
  return codes;
}

std::string languageName(const std::string& code) {
  static const std::map<std::string, const char*> known{
      {"de", "Deutsch"},  {"en", "English"}, {"es", "Español"}, {"fr", "Français"},
      {"it", "Italiano"}, {"ja", "日本語"},  {"ko", "한국어"},  {"zh", "中文"}};
  const auto found = known.find(code);
  return found != known.end() ? found->second : code;
}

}  // namespace

std::string customerDocument(std::string_view name, std::span<const VenuePlan> venues) {
  DocumentText text;
  text.beginMap();
  text.field("id", 1);
  text.field("name", name);
  text.field("generatedAt", venues.front().generatedAt);
  text.beginBatch("venues");
  for (const VenuePlan& venue : venues) text.item(venueHead(venue));
  text.endBatch();
  text.endMap();
  return text.finished();
}

std::string localesDocument(std::span<const VenuePlan> venues) {
  Value items = Value::list();
  for (const std::string& code : languagesOf(venues)) {
    items.append(Value::map({{"id", static_cast<std::int64_t>(items.size() + 1)},
                             {"externalId", code},
                             {"name", languageName(code)},
                             {"localeCode", code}}));
  }
  DocumentText text;
  text.beginMap();
  text.field("items", items);
  text.endMap();
  return text.finished();
}

std::string venueDocument(const VenuePlan& venue) {
  DocumentText text;
  text.beginMap();
  text.field("id", venue.id);
  text.field("externalId", externalIdOf(venue.draft->id));
  text.field("name", venue.name);
  text.field("coordinates", corners(venue.placement));
  text.field("status", 1);
  text.field("customerId", 1);
  text.field("generatedAt", venue.generatedAt);
  text.field("labelType", 0);
  text.field("clustering", 0);
  text.field("defaultMapTemplateId", mapTemplate.id);
  text.field("extensors", Value::map({{"categories", categories(venue)},
                                      {"names", otherNames(venue.draft->names, venue.language)}}));
  writeBuildings(text, venue);
  writePathTypes(text, venue);
  writeAmenities(text, venue);
  writeMapLabels(text, venue);
  writeDestinations(text, venue);
  text.endMap();
  return text.finished();
}

std::string buildingDocument(const VenuePlan& venue, std::size_t building) {
  DocumentText text;
  text.beginMap();
  const Value head = buildingHead(venue, building);
  for (const Value::Entry& entry : head.entries()) text.field(entry.key.text(), entry.value);
  text.field("generatedAt", venue.generatedAt);
  text.beginBatch("floors");
  for (std::size_t i = 0; i < venue.floors.size(); ++i) {
    if (venue.draft->floors[i].building == building) writeFloor(text, venue, i);
  }
  text.endBatch();
  text.endMap();
  return text.finished();
}

std::string destinationsDocument(const VenuePlan& venue) {
  DocumentText text;
  text.beginMap();
  text.field("venueId", venue.id);
  writeDestinations(text, venue);
  text.endMap();
  return text.finished();
}

}  // namespace tern::imports
