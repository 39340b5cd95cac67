#include "tests/support/RandomSite.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"

namespace tern::test {

namespace {

constexpr std::size_t typeCount = 4;
constexpr std::size_t mostBuildings = 3;

Value siteBatch(Value items) {
  Value batch = Value::map();
  batch.set("items", std::move(items));
  return batch;
}

class SiteMaker {
 public:
  explicit SiteMaker(Tape& tape) : tape_(tape), mapCount_(1 + tape.below(5)) {
    for (std::size_t i = 2 + tape.below(24); i > 0; --i) mapOf_.push_back(1 + mapNumber());
  }

  Value document();
  Value building(std::int64_t id, const std::vector<std::size_t>& buildingOfMap);
  std::size_t mapCount() const { return mapCount_; }

 private:
  std::int64_t mapNumber() { return static_cast<std::int64_t>(tape_.below(mapCount_)); }
  std::int64_t waypointId() { return 1 + static_cast<std::int64_t>(tape_.below(mapOf_.size())); }
  std::int64_t mapOf(std::int64_t waypoint) const {
    return mapOf_[static_cast<std::size_t>(waypoint - 1)];
  }
  Value locations(std::size_t most);
  Value pathType(std::int64_t id);
  Value map(std::int64_t id);
  void drawPaths();

  Tape& tape_;
  const std::size_t mapCount_;
  std::vector<std::int64_t> mapOf_;  // of waypoints 1, 2, ...
  // With the map of each one's first end.
  std::vector<std::pair<std::int64_t, Value>> paths_;
};

Value SiteMaker::locations(std::size_t most) {
  Value list = Value::list();
  for (std::size_t i = 1 + tape_.below(most); i > 0; --i) {
    const std::int64_t waypoint = waypointId();
    list.append(Value::map({{"mapId", mapOf(waypoint)}, {"waypointIds", Value::list({waypoint})}}));
  }
  return list;
}

Value SiteMaker::pathType(std::int64_t id) {
  Value type = Value::map({{"id", id},
                           {"weight", tape_.pick<Value>({1, 2, 0.1, 7.25})},
                           {"accessibility", tape_.pick<Value>({0, 0, 2, 60})},
                           {"verticalWeight", tape_.pick<Value>({0, 1, 3})}});
  if (id != 1) type.set("locations", locations(6));
  return type;
}

Value SiteMaker::document() {
  Value types = Value::list();
  for (std::size_t i = 1; i <= typeCount; ++i) {
    types.append(pathType(static_cast<std::int64_t>(i)));
  }
  Value destinations = Value::list();
  const std::size_t count = 1 + tape_.below(6);
  for (std::size_t i = 1; i <= count; ++i) {
    destinations.append(
        Value::map({{"id", static_cast<std::int64_t>(i)}, {"locations", locations(3)}}));
  }
  drawPaths();
  Value document = Value::map({{"id", 1}, {"name", "random"}});
  document.set("pathTypes", siteBatch(std::move(types)));
  document.set("destinations", siteBatch(std::move(destinations)));
  Value buildings = Value::list();
  for (std::size_t i = 1; i <= mostBuildings; ++i) {
    buildings.append(Value::map({{"id", static_cast<std::int64_t>(i)}}));
  }
  document.set("buildings", siteBatch(std::move(buildings)));
  return document;
}

void SiteMaker::drawPaths() {
  const std::size_t count = tape_.below(3 * mapOf_.size());
  for (std::size_t i = 0; i < count; ++i) {
    const std::int64_t from = waypointId();
    const auto type = 1 + static_cast<std::int64_t>(tape_.below(typeCount));
    paths_.emplace_back(mapOf(from),
                        Value::map({{"id", static_cast<std::int64_t>(100 + i)},
                                    {"pathTypeId", type},
                                    {"waypointIds", Value::list({from, waypointId()})},
                                    {"direction", tape_.pick<Value>({0, 0, 0, 1, 2})}}));
  }
}

Value SiteMaker::map(std::int64_t id) {
  Value waypoints = Value::list();
  for (std::size_t i = 0; i < mapOf_.size(); ++i) {
    if (mapOf_[i] != id) continue;
    const auto x = static_cast<double>(tape_.below(6)) * 10;
    const auto y = static_cast<double>(tape_.below(6)) * 10;
    waypoints.append(Value::map({{"id", static_cast<std::int64_t>(i + 1)},
                                 {"mapId", id},
                                 {"coordinates", Value::list({x, y})}}));
  }
  Value paths = Value::list();
  for (const auto& [mapId, path] : paths_) {
    if (mapId == id) paths.append(path);
  }
  Value made = Value::map({{"id", id}, {"mmPerPixel", tape_.pick<Value>({100, 21.7, 0.5})}});
  made.set("waypoints", siteBatch(std::move(waypoints)));
  made.set("paths", siteBatch(std::move(paths)));
  return made;
}

Value SiteMaker::building(std::int64_t id, const std::vector<std::size_t>& buildingOfMap) {
  Value floors = Value::list();
  for (std::size_t i = 0; i < mapCount_; ++i) {
    if (static_cast<std::int64_t>(buildingOfMap[i]) != id) continue;
    const auto mapId = static_cast<std::int64_t>(i + 1);
    Value floor = Value::map({{"id", mapId}, {"map", map(mapId)}});
    if (!tape_.oneIn(8)) floor.set("level", static_cast<std::int64_t>(tape_.below(3)));
    floors.append(std::move(floor));
  }
  Value made = Value::map({{"id", id}});
  made.set("floors", siteBatch(std::move(floors)));
  return made;
}

}  // namespace

std::shared_ptr<TernActiveVenue> randomSite(Tape& tape) {
  SiteMaker maker(tape);
  auto venue = TernActiveVenue::initWithDictionary(maker.document());
  std::vector<std::size_t> buildingOfMap;
  for (std::size_t i = 0; i < maker.mapCount(); ++i) {
    buildingOfMap.push_back(1 + tape.below(mostBuildings));
  }
  for (std::size_t i = 1; i <= mostBuildings; ++i) {
    const auto id = static_cast<std::int64_t>(i);
    addBuilding(*venue, id, maker.building(id, buildingOfMap));
  }
  attachWaypoints(*venue);
  venue->loadGridData();
  venue->loadKDTree();
  return venue;
}

std::shared_ptr<TernWaypoint> randomWaypoint(Tape& tape, const TernActiveVenue& venue) {
  const auto waypoints = venue.maps->getAllWaypoints();
  return waypoints[tape.below(std::min<std::size_t>(waypoints.size(), 256))];
}

std::int64_t randomSiteLevel(Tape& tape) {
  return tape.pick<std::int64_t>({100, 0, 1, 2, 59, 60, -1});
}

}  // namespace tern::test
