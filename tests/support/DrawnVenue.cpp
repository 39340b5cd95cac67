#include "tests/support/DrawnVenue.hpp"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"

namespace tern::test {

namespace {

bool isWaypoint(char character) { return std::isalpha(static_cast<unsigned char>(character)) != 0; }

char letterOf(std::int64_t id) { return static_cast<char>(id > 26 ? 'a' + id - 27 : 'A' + id - 1); }

Value batchOf(Value items) { return Value::map({{"items", std::move(items)}}); }

Value drawWaypoints(const Drawing::Floor& floor, std::size_t mapId) {
  Value waypoints = Value::list();
  for (std::size_t row = 0; row < floor.lines.size(); ++row) {
    const std::string_view line = floor.lines[row];
    for (std::size_t column = 0; column < line.size(); ++column) {
      if (!isWaypoint(line[column])) continue;
      const auto x = static_cast<double>(column) * unitsPerCharacter;
      const auto y = static_cast<double>(row) * unitsPerCharacter;
      waypoints.append(Value::map({{"id", idOf(line[column])},
                                   {"mapId", static_cast<std::int64_t>(mapId)},
                                   {"coordinates", Value::list({x, y})}}));
    }
  }
  return waypoints;
}

std::int64_t pathTypeId(const Drawing& drawing, std::string_view name) {
  std::int64_t id = 1;
  for (const Drawing::PathType& type : drawing.pathTypes) {
    if (type.name.empty()) continue;
    ++id;
    if (type.name == name) return id;
  }
  throw std::invalid_argument("no such path type: " + std::string(name));
}

Value drawPath(const Drawing& drawing, std::size_t place) {
  std::istringstream words{std::string(drawing.paths[place])};
  std::string ends;
  words >> ends;
  Value waypointIds = Value::list();
  for (const char end : ends) {
    if (isWaypoint(end)) waypointIds.append(idOf(end));
  }
  std::int64_t type = 1;
  int direction = 0;
  for (std::string word; words >> word;) {
    if (word == "up") {
      direction = 1;
    } else if (word == "down") {
      direction = 2;
    } else {
      type = pathTypeId(drawing, word);
    }
  }
  if (waypointIds.size() < 2 || (ends.find('>') != std::string::npos && direction == 0)) {
    throw std::invalid_argument("no path: " + std::string(drawing.paths[place]));
  }
  return Value::map({{"id", static_cast<std::int64_t>(place + 1)},
                     {"pathTypeId", type},
                     {"direction", direction},
                     {"waypointIds", std::move(waypointIds)}});
}

bool isOn(const Drawing::Floor& floor, char letter) {
  return std::any_of(floor.lines.begin(), floor.lines.end(), [&](std::string_view line) {
    return line.find(letter) != std::string_view::npos;
  });
}

// The first floor on which the first of the waypoints is drawn.
std::size_t floorOf(const Drawing& drawing, std::string_view letters) {
  const auto& floors = drawing.floors;
  const auto floor = std::find_if(floors.begin(), floors.end(), [&](const Drawing::Floor& each) {
    return !letters.empty() && isOn(each, letters.front());
  });
  if (floor == floors.end()) throw std::invalid_argument("is nowhere: " + std::string(letters));
  return static_cast<std::size_t>(floor - floors.begin());
}

Value drawFloor(const Drawing& drawing, std::size_t place) {
  const Drawing::Floor& floor = drawing.floors[place];
  Value paths = Value::list();
  for (std::size_t path = 0; path < drawing.paths.size(); ++path) {
    if (floorOf(drawing, drawing.paths[path]) == place) paths.append(drawPath(drawing, path));
  }
  const auto id = static_cast<std::int64_t>(place + 1);
  Value drawn =
      Value::map({{"id", id},
                  {"level", floor.level.value_or(static_cast<int>(place))},
                  {"preference", floor.preference},
                  {"map", Value::map({{"id", id},
                                      {"mmPerPixel", floor.mmPerPixel},
                                      {"waypoints", batchOf(drawWaypoints(floor, place + 1))},
                                      {"paths", batchOf(std::move(paths))}})}});
  if (!floor.name.empty()) drawn.set("name", floor.name);
  return drawn;
}

Value drawLocations(const Drawing& drawing, const Drawing::Place& place) {
  Value locations = Value::list();
  std::istringstream words{place.at};
  for (std::string letters; words >> letters;) {
    Value ids = Value::list();
    for (const char letter : letters) ids.append(idOf(letter));
    locations.append(
        Value::map({{"mapId", static_cast<std::int64_t>(floorOf(drawing, letters) + 1)},
                    {"waypointIds", std::move(ids)}}));
  }
  return locations;
}

// Sets the batch of the places where there are any.
void drawPlaces(const Drawing& drawing, std::string_view name,
                const std::vector<Drawing::Place>& places, Value& document) {
  if (places.empty()) return;
  Value drawn = Value::list();
  for (const Drawing::Place& place : places) {
    Value each = Value::map({{"id", place.id}});
    if (!place.name.empty()) each.set("name", place.name);
    each.set("locations", drawLocations(drawing, place));
    drawn.append(std::move(each));
  }
  document.set(name, batchOf(std::move(drawn)));
}

Value drawPathTypes(const Drawing& drawing) {
  const auto draw = [](std::int64_t id, const Drawing::PathType& type) {
    return Value::map({{"id", id},
                       {"name", type.name},
                       {"weight", type.weight},
                       {"accessibility", type.accessibility},
                       {"verticalWeight", type.verticalWeight}});
  };
  Value types = Value::list({draw(1, {})});
  for (const Drawing::PathType& type : drawing.pathTypes) {
    if (type.name.empty()) {
      types.items()[0] = draw(1, type);
    } else {
      types.append(draw(pathTypeId(drawing, type.name), type));
    }
  }
  for (const Drawing::Place& connector : drawing.connectors) {
    for (Value& type : types.items()) {
      if (type["id"] == Value(connector.id)) {
        type.set("locations", drawLocations(drawing, connector));
      }
    }
  }
  return types;
}

}  // namespace

Value drawVenueDocument(const Drawing& drawing) {
  Value document = Value::map({{"id", 1},
                               {"name", "drawn"},
                               {"buildings", batchOf(Value::list({Value::map({{"id", 1}})}))},
                               {"pathTypes", batchOf(drawPathTypes(drawing))}});
  drawPlaces(drawing, "destinations", drawing.destinations, document);
  drawPlaces(drawing, "amenities", drawing.amenities, document);
  return document;
}

Value drawBuildingDocument(const Drawing& drawing) {
  Value floors = Value::list();
  for (std::size_t floor = 0; floor < drawing.floors.size(); ++floor) {
    floors.append(drawFloor(drawing, floor));
  }
  return Value::map({{"id", 1}, {"floors", batchOf(std::move(floors))}});
}

DrawnVenue drawVenue(const Drawing& drawing) {
  DrawnVenue venue;
  venue.buildings = {TernBuilding::initWithDictionary(drawBuildingDocument(drawing))};
  venue.maps = std::make_shared<TernMapCollection>();
  for (const TernFloor& floor : venue.buildings[0]->floors->each()) {
    venue.maps->addMapToCollection(floor.map.record());
    const auto paths = floor.map->paths->getAll();
    venue.paths.insert(venue.paths.end(), paths.begin(), paths.end());
  }
  venue.waypoints = venue.maps->getAllWaypoints();
  TernPathTypeCollection types;
  types.createBatch(batchOf(drawPathTypes(drawing)));
  venue.pathTypes = types.getAll();
  return venue;
}

std::shared_ptr<TernWaypoint> DrawnVenue::waypoint(char letter) const {
  const auto found = std::find_if(waypoints.begin(), waypoints.end(),
                                  [&](const std::shared_ptr<TernWaypoint>& each) {
                                    return each->id.integer() == idOf(letter);
                                  });
  return found != waypoints.end() ? *found : nullptr;
}

std::string lettersOf(const TernRoute& route) {
  std::string letters;
  for (const TernPathPerFloor& segment : route) {
    if (!letters.empty()) letters += ' ';
    for (const TernASNode& node : segment.points) letters += letterOf(node.nodeId());
  }
  return letters;
}

std::string lettersOf(const std::vector<std::shared_ptr<TernWaypoint>>& waypoints) {
  std::string letters;
  for (const auto& waypoint : waypoints) letters += letterOf(waypoint->id.integer());
  return letters;
}

}  // namespace tern::test
