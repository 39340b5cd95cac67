// The command that shows how a venue is built: its buildings with their floors and maps, its path
// types and what each accessibility level makes of them.
#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "tools/tern/CommandTable.hpp"

namespace tern::command {

namespace {

// What a floor has whose document says null.
constexpr std::int64_t unknownLevel = -2147483648;

Value floorPart(const TernFloor& floor) {
  const bool hasLevel = floor.level.isNumber() && floor.level.integer() != unknownLevel;
  return Value::map({{"id", floor.id.integer()},
                     {"name", floor.name.text()},
                     {"shortName", floor.shortName.text()},
                     {"level", hasLevel ? floor.level : Value(nullptr)},
                     {"mapId", floor.map ? Value(floor.map->id.integer()) : Value(nullptr)}});
}

// The highest first, as a board beside a lift has them; behind them those without a level.
Value floorsPart(const TernBuilding& building) {
  std::vector<Value> floors;
  if (building.floors) {
    for (const TernFloor& floor : building.floors->each()) floors.push_back(floorPart(floor));
  }
  std::ranges::stable_sort(floors, [](const Value& a, const Value& b) {
    const bool isRanked = !a["level"].isNull() && !b["level"].isNull();
    return isRanked ? a["level"].number() > b["level"].number()
                    : !a["level"].isNull() && b["level"].isNull();
  });
  return Value::listOf(floors);
}

Value buildingsPart(const TernActiveVenue& venue) {
  Value list = Value::list();
  if (!venue.buildings) return list;
  for (const TernBuilding& building : venue.buildings->each()) {
    Value part = Value::map({{"id", building.id.integer()}, {"name", building.name.text()}});
    part.set("floors", floorsPart(building));
    list.append(std::move(part));
  }
  return list;
}

// The path types of all paths, and those that are placed.
std::set<std::int64_t> usedPathTypes(const TernActiveVenue& venue) {
  std::set<std::int64_t> used;
  for (const TernMap& map : venue.maps->each()) {
    if (!map.paths) continue;
    for (const TernPath& path : map.paths->each()) used.insert(path.pathTypeId.integer());
  }
  for (const TernPathType& type : venue.pathTypes->each()) {
    if (!type.waypoints.empty()) used.insert(type.id.integer());
  }
  return used;
}

Value pathTypesPart(const TernActiveVenue& venue) {
  Value list = Value::list();
  if (!venue.pathTypes) return list;
  const std::set<std::int64_t> used = usedPathTypes(venue);
  for (const TernPathType& type : venue.pathTypes->each()) {
    list.append(Value::map({{"id", type.id.integer()},
                            {"name", type.name.text()},
                            {"accessibility", type.accessibility.integer()},
                            {"isUsed", used.contains(type.id.integer())}}));
  }
  return list;
}

// Each level that admits a path type which the one below does not, with all that it admits.
Value levelsPart(const Value& pathTypes) {
  std::set<std::int64_t> levels;
  for (const Value& type : pathTypes.items()) {
    if (type["isUsed"].flag()) levels.insert(type["accessibility"].integer());
  }
  Value list = Value::list();
  for (const std::int64_t level : levels) {
    Value admits = Value::list();
    for (const Value& type : pathTypes.items()) {
      const bool isAdmitted = type["accessibility"].integer() <= level;
      if (isAdmitted && type["isUsed"].flag()) admits.append(type["id"]);
    }
    Value part = Value::map({{"accessibility", level}});
    part.set("admits", std::move(admits));
    list.append(std::move(part));
  }
  return list;
}

Value descriptionOf(const TernActiveVenue& venue) {
  Value description = Value::map(
      {{"venue", Value::map({{"id", venue.id.integer()}, {"name", venue.name.text()}})}});
  description.set("buildings", buildingsPart(venue));
  description.set("pathTypes", pathTypesPart(venue));
  description.set("levels", levelsPart(description["pathTypes"]));
  return description;
}

// "Garden Hall (building 1)"; "building 1" without a name.
std::string titleOf(const Value& part, const std::string& kind) {
  const std::string record = kind + " " + part["id"].printed();
  const std::string name(part["name"].text());
  return name.empty() ? record : name + " (" + record + ")";
}

//   Ground Floor (G), level 0, map 12
std::string floorText(const Value& floor) {
  std::string name(floor["name"].text());
  const std::string shortName(floor["shortName"].text());
  if (name.empty()) name = shortName.empty() ? "floor " + floor["id"].printed() : shortName;
  if (!shortName.empty() && shortName != name) name += " (" + shortName + ")";
  if (!floor["level"].isNull()) name += ", level " + floor["level"].printed();
  return "  " + name +
         (floor["mapId"].isNull() ? ", no map" : ", map " + floor["mapId"].printed()) + "\n";
}

std::string buildingsText(const Value& buildings) {
  std::string text;
  for (const Value& building : buildings.items()) {
    text += titleOf(building, "building") + "\n";
    for (const Value& floor : building["floors"].items()) text += floorText(floor);
    if (building["floors"].size() == 0) text += "  not loaded\n";
  }
  return text;
}

//   0: Walking (path type 1), Lift (path type 2)
//   1: also Stairs (path type 3)
std::string levelsText(const Value& description) {
  std::string text = "Accessibility levels, and what each admits\n";
  std::int64_t below = 0;
  for (const Value& level : description["levels"].items()) {
    const std::int64_t here = level["accessibility"].integer();
    const bool isFirst = &level == &description["levels"].items().front();
    std::string types;
    for (const Value& type : description["pathTypes"].items()) {
      const std::int64_t least = type["accessibility"].integer();
      if (!type["isUsed"].flag() || least > here || (!isFirst && least <= below)) continue;
      types += (types.empty() ? "" : ", ") + titleOf(type, "path type");
    }
    text += "  " + std::to_string(here) + (isFirst ? ": " : ": also ") + types + "\n";
    below = here;
  }
  return text;
}

Outcome describeFloors(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const Value description = descriptionOf(*venue);
  if (call.json) return Answer{.text = jsonLine(description), .remark = {}};
  return Answer{.text = titleOf(description["venue"], "venue") + "\n\n" +
                        buildingsText(description["buildings"]) + "\n" + levelsText(description),
                .remark = {}};
}

}  // namespace

const Command floorsCommand{.name = "floors",
                            .summary = "show buildings, floors and accessibility levels",
                            .about = AboutVenue{describeFloors},
                            .help = R"(Examples:
  tern generate --out mall
  tern floors --data mall
  tern floors --data mall --json

A level admits its path types and all of lower levels: with --accessibility 0 a
route takes only what the first line names. Levels that are not listed admit
what the next lower one does. Path types that no path and no place has are left
out.
)"};

}  // namespace tern::command
