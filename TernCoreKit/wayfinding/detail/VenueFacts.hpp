// What the records of a venue, or of several joined ones, said when its graph was built. Records
// that change later change nothing here.
//
// Ownership: plain data; shares the floors and, where the maps know other waypoints than the graph
// has, these. Threads: once read it is never changed. Fails: never.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/wayfinding/detail/FloorIndex.hpp"
#include "TernCoreKit/wayfinding/detail/GridRecords.hpp"
#include "TernCoreKit/wayfinding/detail/IdIndex.hpp"
#include "TernCoreKit/wayfinding/detail/Index.hpp"
#include "TernCoreKit/wayfinding/detail/LinkCost.hpp"
#include "TernCoreKit/wayfinding/detail/PackedNumbers.hpp"
#include "TernCoreKit/wayfinding/detail/ValueColumn.hpp"

namespace tern::inline v5::detail {

// A map that waypoints lie on.
struct MapFacts {
  std::int64_t mapId = 0;
  float z = 0;  // map units
  std::int32_t multiplier = 1;
};

struct WaypointColumns {
  ValueColumn ids;
  ValueColumn xs;  // as stored
  ValueColumn ys;
  PackedNumbers maps;
  IdIndex byId;

  std::size_t count() const { return maps.size(); }
  MapIndex mapOf(std::size_t waypoint) const { return MapIndex{maps[waypoint]}; }
};

// The waypoints that the maps hold, where these are not the graph's own in their order.
struct MapWaypoints {
  WaypointColumns columns;
  std::vector<std::shared_ptr<TernWaypoint>> records;
};

// What a path type gives to the edges of its paths; absent of one that nobody knows.
struct PathTypeFacts {
  Value weight;
  Value accessibility;
  Value verticalWeight;
};

// What paths of one type and direction share.
struct PathRule {
  Value type;
  Value direction;
  PathTypeFacts facts;
  Passage passage;
  TypeRank rank = none<TypeRank>;
};

// A path type that paths have, known or not.
struct RankedType {
  std::int64_t typeId = 0;
  std::int64_t accessibility = 0;
};

struct PathColumns {
  ValueColumn ids;
  PackedNumbers rules;
  // One more than there are paths; empty while each has two.
  Indexed<PathIndex, std::uint32_t> firstEnd;
  std::vector<PathEnd> ends;
  // Ids that no waypoint of the graph has.
  std::vector<std::int64_t> strangers;
  IdIndex strangerById;
  // Paths in front of those between venues.
  std::uint32_t recordCount = 0;
  // By path between venues: the one waypoint that has it as an edge.
  std::vector<WaypointIndex> exits;

  std::size_t count() const { return rules.size(); }
  std::span<const PathEnd> endsOf(PathIndex path) const {
    if (firstEnd.empty()) return std::span(ends).subspan(std::size_t{2} * numberOf(path), 2);
    const std::uint32_t first = firstEnd[path];
    return std::span(ends).subspan(first, firstEnd[PathIndex{numberOf(path) + 1}] - first);
  }
};

struct VenueFacts {
  bool isForMultiVenue = false;
  FloorIndex floors;
  Indexed<MapIndex, MapFacts> maps;
  WaypointColumns waypoints;
  std::unique_ptr<MapWaypoints> mapWaypoints;
  std::vector<PathTypeFacts> pathTypes;
  IdIndex pathTypeById;
  PathColumns paths;
  Indexed<RuleIndex, PathRule> rules;
  Indexed<TypeRank, RankedType> ranks;

  // The waypoints as the maps know them.
  const WaypointColumns& known() const {
    return mapWaypoints != nullptr ? mapWaypoints->columns : waypoints;
  }
  bool hasRepeats() const { return waypoints.byId.distinct() < waypoints.count(); }
  // The first waypoint that has the id of this one.
  WaypointIndex firstOf(WaypointIndex waypoint) const {
    return hasRepeats() ? waypoints.byId.first<WaypointIndex>(idOf(waypoint)) : waypoint;
  }
  std::int64_t idOf(WaypointIndex waypoint) const {
    return waypoints.ids.integer(numberOf(waypoint));
  }

  bool isWaypoint(PathEnd end) const { return numberOf(end) < waypoints.count(); }
  // None of an id that no path names and no waypoint has.
  PathEnd endOf(std::int64_t id) const;
  std::int64_t idOf(PathEnd end) const;
  // None where no map knows it.
  KnownIndex knownAt(PathEnd end) const;
  KnownIndex knownById(std::int64_t id) const { return known().byId.first<KnownIndex>(id); }
  // Whether a node's own waypoint may not tell where its links run, or not soon.
  bool hidesPoints() const { return isForMultiVenue || mapWaypoints != nullptr; }
  // Where the waypoint lies, as far as costs read it; of none where what nobody knows lies.
  FloorPoint pointOf(KnownIndex waypoint) const;
  PathTypeFacts pathType(std::int64_t id) const;
  const PathRule& ruleOf(PathIndex path) const {
    return rules[RuleIndex{paths.rules[numberOf(path)]}];
  }
};

VenueFacts readVenue(const GridRecords& records);

}  // namespace tern::detail
