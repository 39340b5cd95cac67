#include <string>

#include "tools/check/Checks.hpp"
#include "tools/check/KnownIds.hpp"

namespace tern::check {

namespace {

std::string numbered(std::string_view record, const Value& id) {
  return std::string(record) + " " + (id.isNumber() ? id.printed() : "without an id");
}

class ReferenceCheck {
 public:
  ReferenceCheck(const Subject& subject, Findings& findings)
      : subject_(subject), known_(subject), findings_(findings) {}

  void check() {
    checkDefaults();
    checkPlaces("destinations", "destination");
    checkPlaces("amenities", "amenity");
    checkPlaces("pathTypes", "path type");
    checkLabels();
    forEachMap(subject_, [&](const Value& map) { checkMap(map); });
  }

 private:
  // What a record that is not named at all refers to is not missing.
  static bool isNamed(const Value& id) { return id.isNumber() && id.integer() != 0; }

  void tell(const Value& owner, std::string_view record, const Value& map, std::string what) {
    Finding finding{Kind::danglingId, {}, {}, numbered(record, owner["id"])};
    if (owner["id"].isNumber()) finding.ids.push_back(owner["id"].integer());
    if (map.isNumber() && known_.maps.contains(map.integer())) finding.map = map.integer();
    if (finding.map) finding.message += onFloor(subject_, finding.map);
    finding.message += " " + what;
    findings_.push_back(std::move(finding));
  }

  void checkDefaults() {
    const Value& buildings = subject_.document["buildings"];
    const Value& first = buildings["defaultId"];
    if (isNamed(first) && !known_.buildings.contains(first.integer())) {
      tell(subject_.document, "venue", {},
           "has building " + first.printed() + " as its first, which is not there");
    }
    for (const Value& building : subject_.buildings) {
      const Value& floor = building["defaultFloorId"];
      if (!isNamed(floor) || known_.floors.contains(floor.integer())) continue;
      tell(building, "building", {},
           "has floor " + floor.printed() + " as its first, which is not there");
    }
  }

  void checkPlaces(std::string_view key, std::string_view record) {
    for (const Value& place : itemsOf(subject_.document, key)) {
      checkId(place, record, {});
      for (const Value& location : place["locations"].items()) {
        checkLocation(place, record, location);
      }
    }
  }

  void checkLocation(const Value& place, std::string_view record, const Value& location) {
    const Value& map = location["mapId"];
    const auto there = known_.maps.find(map.integer());
    if (there == known_.maps.end()) {
      tell(place, record, {}, "is placed on map " + map.printed() + ", which is not there");
      return;
    }
    for (const Value& id : location["waypointIds"].items()) {
      if (!there->second.contains(id.integer())) {
        tell(place, record, map, "is placed at waypoint " + id.printed() + whereIs(id));
      }
    }
  }

  std::string whereIs(const Value& waypointId) const {
    const auto found = known_.mapOfWaypoint.find(waypointId.integer());
    if (found == known_.mapOfWaypoint.end()) return ", which is not there";
    return ", which is on map " + std::to_string(found->second);
  }

  void checkLabels() {
    for (const Value& label : itemsOf(subject_.document, "mapLabels")) {
      for (const Value& instance : itemsOf(label, "mapLabelInstances")) {
        const Value& map = instance["mapId"];
        if (!isNamed(map) || known_.maps.contains(map.integer())) continue;
        tell(label, "map label", {}, "is placed on map " + map.printed() + ", which is not there");
      }
    }
  }

  void checkMap(const Value& map) {
    checkId(map, "map", {});
    for (const Value& waypoint : itemsOf(map, "waypoints")) checkWaypoint(waypoint, map["id"]);
    for (const Value& path : itemsOf(map, "paths")) checkPath(path, map["id"]);
  }

  // Nothing can refer to a record without an id, and the library leaves it out.
  void checkId(const Value& item, std::string_view record, const Value& map) {
    if (!item["id"].isNumber()) tell(item, record, map, "cannot be referred to");
  }

  void checkWaypoint(const Value& waypoint, const Value& map) {
    checkId(waypoint, "waypoint", map);
    const Value& said = waypoint["mapId"];
    if (said.integer() != map.integer()) {
      tell(waypoint, "waypoint", map,
           "says that it is on map " + (said.isNumber() ? said.printed() : "nothing"));
    }
    const Value& joined = waypoint["associations"];
    checkAssociations(waypoint, map, joined["destinations"], known_.destinations, "destination");
    checkAssociations(waypoint, map, joined["amenities"], known_.amenities, "amenity");
  }

  void checkAssociations(const Value& waypoint, const Value& map, const Value& ids,
                         const Ids& known, const std::string& record) {
    for (const Value& id : ids.items()) {
      if (!id.isNumber() || known.contains(id.integer())) continue;
      tell(waypoint, "waypoint", map,
           "is that of " + record + " " + id.printed() + ", which is not there");
    }
  }

  void checkPath(const Value& path, const Value& map) {
    checkId(path, "path", map);
    const Value& type = path["pathTypeId"];
    if (!known_.pathTypes.contains(type.integer())) {
      tell(path, "path", map,
           type.isNumber() ? "is of path type " + type.printed() + ", which is not there"
                           : "has no path type");
    }
    const auto ends = path["waypointIds"].items();
    if (ends.size() < 2) tell(path, "path", map, "joins fewer than two waypoints");
    for (const Value& id : ends) {
      if (!id.isNumber() || !known_.mapOfWaypoint.contains(id.integer())) {
        tell(path, "path", map, "ends at waypoint " + id.printed() + ", which is not there");
      }
    }
  }

  const Subject& subject_;
  const KnownIds known_;
  Findings& findings_;
};

}  // namespace

void checkReferences(const Subject& subject, Findings& findings) {
  ReferenceCheck(subject, findings).check();
}

}  // namespace tern::check
