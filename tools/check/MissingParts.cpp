#include <cmath>
#include <limits>
#include <set>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tools/check/Checks.hpp"

namespace tern::check {

namespace {

class PartCheck {
 public:
  PartCheck(const Subject& subject, Findings& findings) : subject_(subject), findings_(findings) {}

  void check() {
    const TernActiveVenue& venue = subject_.venue;
    if (venue.name.text().empty()) tell(Kind::missingName, "venue", venue.id, {}, "has no name");
    checkMaps();
    if (venue.buildings) checkBuildings(*venue.buildings.get());
    if (venue.destinations) checkNames(venue.destinations->each(), "destination");
    if (venue.amenities) checkNames(venue.amenities->each(), "amenity");
    checkMovers();
  }

 private:
  void tell(Kind kind, std::string_view record, const Value& id, const Value& map,
            std::string_view what) {
    Finding finding{kind, {id.integer()}, {}, std::string(record) + " " + id.printed()};
    if (map.isNumber()) finding.map = map.integer();
    if (map.isNumber() && record != "floor") finding.message += onFloor(subject_, finding.map);
    finding.message.append(" ").append(what);
    findings_.push_back(std::move(finding));
  }

  void checkMaps() {
    if (subject_.venue.maps == nullptr) return;
    for (const TernMap& map : subject_.venue.maps->each()) {
      const double scale = map.mmPerPixel.number();
      if (scale > 0 && std::isfinite(scale)) continue;
      tell(Kind::missingScale, "map", map.id, map.id, "does not say how long a map unit is");
    }
  }

  // A venue of one building is called by its own name.
  void checkBuildings(const TernBuildingCollection& buildings) {
    for (const TernBuilding& building : buildings.each()) {
      if (buildings.getCount() > 1 && building.name.text().empty()) {
        tell(Kind::missingName, "building", building.id, {}, "has no name");
      }
      if (!building.floors) continue;
      for (const TernFloor& floor : building.floors->each()) checkFloor(floor);
    }
  }

  void checkFloor(const TernFloor& floor) {
    const Value map = floor.map ? floor.map->id : Value();
    if (floor.name.text().empty() && floor.shortName.text().empty()) {
      tell(Kind::missingName, "floor", floor.id, map, "has no name");
    }
    // Which is what a null becomes.
    constexpr std::int64_t noLevel = std::numeric_limits<std::int32_t>::min();
    if (!floor.level.isNumber() || floor.level.integer() == noLevel) {
      tell(Kind::missingLevel, "floor", floor.id, map, "has no level, and counts as level 0");
    }
  }

  template <class Records>
  void checkNames(const Records& records, std::string_view record) {
    for (const auto& each : records) {
      if (!each.name.text().empty()) continue;
      const Value map = each.waypoints.empty() ? Value() : each.waypoints.front()->mapId;
      tell(Kind::missingName, record, each.id, map, "has no name");
    }
  }

  // What changes floors is told by its name.
  void checkMovers() {
    std::set<std::int64_t> movers;
    const Network& network = subject_.network;
    for (std::uint32_t node = 0; node < network.nodes().size(); ++node) {
      for (const Link& link : network.linksOf(node)) {
        if (link.pathType != 1 && network.changesMap(node, link)) movers.insert(link.pathType);
      }
    }
    if (!subject_.venue.pathTypes) return;
    for (const TernPathType& type : subject_.venue.pathTypes->each()) {
      if (!movers.contains(type.id.integer()) || !type.name.text().empty()) continue;
      tell(Kind::missingName, "path type", type.id, {}, "has no name");
    }
  }

  const Subject& subject_;
  Findings& findings_;
};

}  // namespace

void checkParts(const Subject& subject, Findings& findings) {
  PartCheck(subject, findings).check();
}

}  // namespace tern::check
