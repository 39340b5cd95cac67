#include "tests/support/PedestrianNetwork.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/ActiveVenue.hpp"

namespace tern::test {

namespace {

constexpr double unitsPerMetre = 10;

Value readDocument(const std::filesystem::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  JsonResult read = decodeJson(text.str());
  if (read.error) throw std::runtime_error(path.string() + ": " + *read.error);
  return std::move(read.value);
}

// Some files have numbers as texts.
double numberOf(const Value& value) {
  return value.isText() ? std::atof(std::string(value.text()).c_str()) : value.number();
}

struct PathTypeRow {
  int id;
  const char* name;
  double weight;
};
constexpr PathTypeRow pathTypes[] = {{1, "Walking", 1},
                                     {2, "Lift", 600},
                                     {3, "Escalator", 250},
                                     {4, "Stairs", 300},
                                     {6, "Moving walkway", 50}};

// Of a link's route type.
int pathTypeOf(const Value& routeType) {
  switch (static_cast<int>(numberOf(routeType))) {
    case 2:
    case 3:
      return 6;
    case 4:
      return 2;
    case 5:
      return 3;
    case 6:
      return 4;
    default:
      return 1;
  }
}

class NetworkMaker {
 public:
  NetworkMaker(const Value& nodes, const Value& links) {
    for (const Value& node : nodes["features"].items()) {
      const Value& properties = node["properties"];
      const std::string name(properties["node_id"].text());
      ids_[name] = ++lastId_;
      ordinals_.push_back(numberOf(properties["ordinal"]));
      places_.push_back(node["geometry"]["coordinates"]);
      floors_.insert(ordinals_.back());
      left_ = std::min(left_, places_.back().items()[0].number());
      top_ = std::max(top_, places_.back().items()[1].number());
    }
    for (std::int64_t id = 1; id <= lastId_; ++id) {
      addWaypoint(id, ordinalOf(id), places_[static_cast<std::size_t>(id - 1)]);
    }
    for (const Value& link : links["features"].items()) addLink(link);
  }

  std::shared_ptr<TernActiveVenue> venue() {
    Value types = Value::list();
    for (const PathTypeRow& row : pathTypes) {
      types.append(Value::map(
          {{"id", row.id}, {"name", row.name}, {"weight", row.weight}, {"verticalWeight", -1}}));
    }
    Value floors = Value::list();
    for (const double ordinal : floors_) floors.append(floorOf(ordinal));
    Value building = Value::map({{"id", 1}, {"floors", Value::map({{"items", floors}})}});
    const Value stub = Value::map({{"id", 1}});
    return loadVenue(Value::map({{"id", 1},
                                 {"buildings", Value::map({{"items", Value::list({stub})}})},
                                 {"pathTypes", Value::map({{"items", types}})}}),
                     std::move(building));
  }

 private:
  using ByFloor = std::map<double, Value>;

  static Value& listAt(ByFloor& lists, double ordinal) {
    return lists.try_emplace(ordinal, Value::list()).first->second;
  }
  double ordinalOf(std::int64_t id) const { return ordinals_[static_cast<std::size_t>(id - 1)]; }
  std::int64_t floorId(double ordinal) const {
    return std::distance(floors_.begin(), floors_.find(ordinal)) + 1;
  }

  void addWaypoint(std::int64_t id, double ordinal, const Value& at) {
    const auto place = at.items();
    listAt(waypoints_, ordinal)
        .append(Value::map(
            {{"id", id},
             {"mapId", floorId(ordinal)},
             {"coordinates", Value::list({(place[0].number() - left_) * unitsPerMetre,
                                          (top_ - place[1].number()) * unitsPerMetre})}}));
  }

  void addPath(std::int64_t from, std::int64_t to, double ordinal, int type, int direction) {
    listAt(paths_, ordinal)
        .append(Value::map({{"id", ++pathCount_},
                            {"pathTypeId", type},
                            {"waypointIds", Value::list({from, to})},
                            {"direction", direction}}));
  }

  void addLink(const Value& link) {
    const Value& properties = link["properties"];
    std::int64_t from = ids_.at(std::string(properties["start_id"].text()));
    const std::int64_t to = ids_.at(std::string(properties["end_id"].text()));
    const double ordinal = ordinalOf(from);
    const int type = pathTypeOf(properties["route_type"]);
    const auto line = link["geometry"]["coordinates"].items();
    int direction = 0;
    if (ordinal == ordinalOf(to)) {
      for (std::size_t i = 1; i + 1 < line.size(); ++i) {
        addWaypoint(++lastId_, ordinal, line[i]);
        addPath(from, lastId_, ordinal, type, 0);
        from = lastId_;
      }
    } else if (numberOf(properties["direction"]) == 2) {
      direction = ordinalOf(to) > ordinal ? 1 : 2;
    }
    addPath(from, to, ordinal, type, direction);
  }

  Value floorOf(double ordinal) {
    const std::int64_t id = floorId(ordinal);
    Value map = Value::map({{"id", id}, {"mmPerPixel", 1000 / unitsPerMetre}});
    map.set("waypoints", Value::map({{"items", listAt(waypoints_, ordinal)}}));
    map.set("paths", Value::map({{"items", listAt(paths_, ordinal)}}));
    return Value::map({{"id", id}, {"buildingId", 1}, {"level", id}, {"map", map}});
  }

  std::map<std::string, std::int64_t> ids_;
  std::vector<double> ordinals_;
  std::vector<Value> places_;
  std::set<double> floors_;
  ByFloor waypoints_;
  ByFloor paths_;
  std::int64_t lastId_ = 0;
  std::int64_t pathCount_ = 0;
  double left_ = 1e300;
  double top_ = -1e300;
};

}  // namespace

std::shared_ptr<TernActiveVenue> networkVenue(const std::filesystem::path& nodes,
                                              const std::filesystem::path& links) {
  return NetworkMaker(readDocument(nodes), readDocument(links)).venue();
}

}  // namespace tern::test
