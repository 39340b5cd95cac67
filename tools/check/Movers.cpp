#include <algorithm>
#include <set>
#include <unordered_set>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tools/check/Checks.hpp"
#include "tools/check/MapLinks.hpp"
#include "tools/graph/Neighbours.hpp"

namespace tern::check {

namespace {

void tellFloor(const TernFloor& floor, Findings& findings) {
  const std::int64_t id = floor.id.integer();
  const std::string_view name =
      floor.name.text().empty() ? floor.shortName.text() : floor.name.text();
  const std::string numbered = "floor " + std::to_string(id);
  findings.push_back({Kind::floorWithoutMover,
                      {id},
                      floor.map->id.integer(),
                      (name.empty() ? numbered : std::string(name) + " (" + numbered + ")") +
                          " has no way to another map"});
}

// Where a floor is only drawn, nobody is led at all.
bool hasWaypoints(const TernFloor& floor) {
  return floor.map && floor.map->waypoints && floor.map->waypoints->getCount() > 0;
}

void checkFloors(const Subject& subject, Findings& findings) {
  const MapLinks links(subject);
  if (!subject.venue.buildings) return;
  for (const TernBuilding& building : subject.venue.buildings->each()) {
    if (!building.floors) continue;
    for (const TernFloor& floor : building.floors->each()) {
      if (hasWaypoints(floor) && !links.leadOn(floor.map->id.integer())) {
        tellFloor(floor, findings);
      }
    }
  }
}

// Path types and waypoints that a path of the type touches.
std::set<std::pair<std::int64_t, std::int64_t>> touched(const Subject& subject) {
  std::set<std::pair<std::int64_t, std::int64_t>> ends;
  for (std::uint32_t node = 0; node < subject.network.nodes().size(); ++node) {
    for (const Link& link : subject.network.linksOf(node)) {
      ends.emplace(link.pathType, subject.network.nodes()[node].id);
      ends.emplace(link.pathType, subject.network.nodes()[link.to].id);
    }
  }
  return ends;
}

// Path types that say that they are taken where no path of theirs begins or ends.
void checkPlacedTypes(const Subject& subject, Findings& findings) {
  if (!subject.venue.pathTypes) return;
  const auto ends = touched(subject);
  for (const TernPathType& type : subject.venue.pathTypes->each()) {
    const std::int64_t id = type.id.integer();
    const std::string name(type.name.text());
    for (const auto& waypoint : type.waypoints) {
      const std::int64_t at = waypoint->id.integer();
      if (ends.contains({id, at})) continue;
      const std::int64_t map = waypoint->mapId.integer();
      findings.push_back({Kind::moverToNowhere,
                          {id, at},
                          map,
                          (name.empty() ? "path type " + std::to_string(id)
                                        : name + " (path type " + std::to_string(id) + ")") +
                              " is placed at waypoint " + std::to_string(at) +
                              onFloor(subject, map) + ", where no path of it begins"});
    }
  }
}

template <class Collection>
void addWaypoints(const Nested<Collection>& places, std::unordered_set<std::int64_t>& ids) {
  if (!places) return;
  for (const auto& place : places->each()) {
    for (const auto& waypoint : place.waypoints) ids.insert(waypoint->id.integer());
  }
}

// Waypoints that one leaves a mover at, and from where one can only go back.
class DeadEnds {
 public:
  explicit DeadEnds(const Subject& subject)
      : subject_(subject), neighbours_(graph::neighboursIn(subject.ways)) {
    addWaypoints(subject.venue.destinations, wanted_);
    addWaypoints(subject.venue.amenities, wanted_);
    addExits();
  }

  void check(Findings& findings) const {
    const std::vector<Node>& nodes = subject_.network.nodes();
    for (std::uint32_t node = 0; node < nodes.size(); ++node) {
      if (wanted_.contains(nodes[node].id) || !isDeadEnd(node)) continue;
      findings.push_back({Kind::moverToNowhere,
                          {nodes[node].id},
                          nodes[node].map,
                          "at waypoint " + std::to_string(nodes[node].id) +
                              onFloor(subject_, nodes[node].map) +
                              " one can only go back to where one came from"});
    }
  }

 private:
  // A waypoint with a colon in its external id leads on into another venue.
  void addExits() {
    for (const auto& waypoint : subject_.venue.globalASGrid()->waypoints()) {
      if (waypoint->externalId.text().find(':') != std::string_view::npos) {
        wanted_.insert(waypoint->id.integer());
      }
    }
  }

  // Neither a floor's own ways lead on, nor a mover to where the others do not: stops of one lift
  // hang together without it, the floors that two flights at a landing lead to do not.
  bool isDeadEnd(std::uint32_t node) const {
    const std::vector<Node>& nodes = subject_.network.nodes();
    const auto isOnItsMap = [&](std::uint32_t other) {
      return nodes[other].map == nodes[node].map;
    };
    return std::ranges::none_of(neighbours_.of(node), isOnItsMap) &&
           graph::areJoinedWithout(neighbours_, node);
  }

  const Subject& subject_;
  const graph::Digraph neighbours_;
  // Ids of waypoints that are worth going to.
  std::unordered_set<std::int64_t> wanted_;
};

}  // namespace

void checkMovers(const Subject& subject, Findings& findings) {
  checkFloors(subject, findings);
  checkPlacedTypes(subject, findings);
  DeadEnds(subject).check(findings);
}

}  // namespace tern::check
