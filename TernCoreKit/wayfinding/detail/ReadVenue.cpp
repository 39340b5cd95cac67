// Reads the records once, from front to back.
#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/detail/ExitLink.hpp"
#include "TernCoreKit/wayfinding/detail/VenueFacts.hpp"

namespace tern::inline v5::detail {

namespace {

// Records lie all over the heap: each is asked for some while before it is read.
constexpr std::size_t fetchDistance = 12;

template <class Record>
void fetchRecord(const Record& record) {
  constexpr std::size_t line = 64;
  const auto* bytes = reinterpret_cast<const char*>(&record);
  for (std::size_t at = 0; at < sizeof(Record); at += line) __builtin_prefetch(bytes + at);
}

// Gives every map that a waypoint lies on an index.
class MapTable {
 public:
  explicit MapTable(const FloorIndex& floors) : floors_(floors) {}

  MapIndex of(std::int64_t mapId) {
    // Neighbouring waypoints mostly lie on one map.
    if (!maps_.empty() && maps_[last_].mapId == mapId) return last_;
    const auto [found, isNew] = byId_.try_emplace(mapId, maps_.endIndex());
    if (isNew) {
      const FloorIndex::Facts& floor = floors_.find(mapId);
      maps_.push_back({mapId, floor.z, floor.multiplier});
    }
    return last_ = found->second;
  }
  Indexed<MapIndex, MapFacts> take() { return std::move(maps_); }

 private:
  const FloorIndex& floors_;
  Indexed<MapIndex, MapFacts> maps_;
  std::unordered_map<std::int64_t, MapIndex> byId_;
  MapIndex last_{0};
};

void append(const TernWaypoint& waypoint, WaypointColumns& columns, MapTable& maps) {
  columns.ids.append(waypoint.id);
  columns.xs.append(waypoint.coordinate(0));
  columns.ys.append(waypoint.coordinate(1));
  columns.maps.push_back(numberOf(maps.of(waypoint.mapId.integer())));
}

void reserve(std::size_t count, WaypointColumns& columns) {
  columns.ids.reserve(count);
  columns.xs.reserve(count);
  columns.ys.reserve(count);
  columns.maps.reserve(count);
}

WaypointColumns readList(const TernASGrid::Waypoints& waypoints, MapTable& maps) {
  WaypointColumns columns;
  reserve(waypoints.size(), columns);
  std::vector<std::int64_t> ids;
  for (const auto& waypoint : waypoints) {
    append(*waypoint, columns, maps);
    ids.push_back(waypoint->id.integer());
  }
  columns.byId = IdIndex(ids);
  return columns;
}

// The waypoints of all maps, found by the keys that the maps have for them, and whether they are
// the very ones of the list, in its order.
struct MapWalk {
  MapWaypoints found;
  bool isTheList = true;
};

template <class Visit>
void forEachInMaps(const TernASGrid::Maps& maps, Visit visit) {
  for (const auto& map : maps) {
    if (!map->waypoints) continue;
    const std::span<const RecordMap::Entry> entries = map->waypoints->items().entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (i + fetchDistance < entries.size()) {
        fetchRecord(static_cast<const TernWaypoint&>(*entries[i + fetchDistance].record));
      }
      if (entries[i].key.isInteger()) visit(entries[i]);
    }
  }
}

MapWalk readMaps(const GridRecords& records, MapTable& maps) {
  MapWalk walk;
  WaypointColumns& columns = walk.found.columns;
  std::vector<std::int64_t> keys;
  reserve(records.waypoints.size(), columns);
  keys.reserve(records.waypoints.size());
  forEachInMaps(records.maps, [&](const RecordMap::Entry& entry) {
    const auto& waypoint = static_cast<const TernWaypoint&>(*entry.record);
    const std::size_t at = columns.count();
    walk.isTheList = walk.isTheList && waypoint.id.integer() == entry.key.integer() &&
                     at < records.waypoints.size() && records.waypoints[at].get() == &waypoint;
    keys.push_back(entry.key.integer());
    append(waypoint, columns, maps);
  });
  walk.isTheList = walk.isTheList && columns.count() == records.waypoints.size();
  columns.byId = IdIndex(keys);
  return walk;
}

// In a venue the maps hold the very waypoints that the list names, in its order: then one walk over
// the records serves both.
void readWaypoints(const GridRecords& records, VenueFacts& facts) {
  MapTable maps(facts.floors);
  MapWalk walk = readMaps(records, maps);
  if (walk.isTheList) {
    facts.waypoints = std::move(walk.found.columns);
  } else {
    facts.waypoints = readList(records.waypoints, maps);
    forEachInMaps(records.maps, [&](const RecordMap::Entry& entry) {
      walk.found.records.push_back(std::static_pointer_cast<TernWaypoint>(entry.record));
    });
    facts.mapWaypoints = std::make_unique<MapWaypoints>(std::move(walk.found));
  }
  facts.maps = maps.take();
}

void readPathTypes(const TernASGrid::PathTypes& types, VenueFacts& facts) {
  std::vector<std::int64_t> ids;
  for (const auto& type : types) {
    ids.push_back(type->id.integer());
    facts.pathTypes.push_back({type->weight, type->accessibility, type->verticalWeight});
  }
  facts.pathTypeById = IdIndex(ids);
}

// Gives every pair of a path type and a direction an index.
class RuleTable {
 public:
  explicit RuleTable(VenueFacts& facts) : facts_(facts) {}

  RuleIndex of(const Value& type, const Value& direction) {
    auto& rules = facts_.rules;
    const bool isLast = !rules.empty() && rules[last_].type.sameBytes(type) &&
                        rules[last_].direction.sameBytes(direction);
    if (isLast) return last_;
    if (isPlain(type) && isPlain(direction)) {
      const auto [found, isNew] = byKey_.try_emplace(
          {type.kind(), type.integer(), direction.kind(), direction.integer()}, rules.endIndex());
      if (!isNew) return last_ = found->second;
    }
    last_ = rules.endIndex();
    rules.push_back(made(type, direction));
    return last_;
  }

 private:
  // Whether the kind and the integer say everything.
  static bool isPlain(const Value& value) {
    return value.isInteger() || value.isAbsent() || value.isNull() || value.isBoolean();
  }

  PathRule made(const Value& type, const Value& direction) const {
    PathRule rule{type, direction, facts_.pathType(type.integer()), {}, none<TypeRank>};
    rule.passage = {type.integer() == walkingType, direction.integer(),
                    static_cast<float>(rule.facts.weight.number()),
                    static_cast<float>(rule.facts.verticalWeight.number())};
    return rule;
  }

  VenueFacts& facts_;
  std::map<std::tuple<Value::Kind, std::int64_t, Value::Kind, std::int64_t>, RuleIndex> byKey_;
  RuleIndex last_{0};
};

// Adds paths to the facts.
class PathReader {
 public:
  PathReader(VenueFacts& facts, std::size_t expected)
      : facts_(facts), paths_(facts.paths), rules_(facts) {
    paths_.ids.reserve(expected);
    paths_.rules.reserve(expected);
    paths_.ends.reserve(expected * 2);
  }

  void add(const TernPath& path) {
    begin(path.id, rules_.of(path.pathTypeId, path.direction));
    for (const Value& id : path.waypointIds.items()) paths_.ends.push_back(endOf(id.integer()));
  }

  void addVirtual(WaypointIndex exit, std::int64_t other) {
    const std::int64_t id = facts_.idOf(exit);
    begin(virtualEdgeId(id, other), rules_.of(walkingType, 0));
    paths_.ends.push_back(endOf(id));
    paths_.ends.push_back(endOf(other));
    paths_.exits.push_back(exit);
  }

  void close() {
    beginEnds();
    paths_.strangerById = IdIndex(paths_.strangers);
  }

 private:
  void begin(const Value& id, RuleIndex rule) {
    beginEnds();
    paths_.ids.append(id);
    paths_.rules.push_back(numberOf(rule));
  }

  // Notes where the ends of the next path begin, from the first path on that has not two.
  void beginEnds() {
    auto& first = paths_.firstEnd;
    const auto begin = static_cast<std::uint32_t>(paths_.ends.size());
    if (first.empty() && begin == 2 * paths_.count()) return;
    while (first.size() < paths_.count()) {
      first.push_back(2 * static_cast<std::uint32_t>(first.size()));
    }
    first.push_back(begin);
  }

  PathEnd endOf(std::int64_t id) {
    const auto waypoint = facts_.waypoints.byId.first<PathEnd>(id);
    if (waypoint != none<PathEnd>) return waypoint;
    const std::size_t next = facts_.waypoints.count() + paths_.strangers.size();
    const auto [found, isNew] =
        strangers_.try_emplace(id, PathEnd{static_cast<std::uint32_t>(next)});
    if (isNew) paths_.strangers.push_back(id);
    return found->second;
  }

  VenueFacts& facts_;
  PathColumns& paths_;
  RuleTable rules_;
  std::unordered_map<std::int64_t, PathEnd> strangers_;
};

void joinVenues(const GridRecords& records, const VenueFacts& facts, PathReader& reader) {
  for (std::size_t i = 0; i < records.waypoints.size(); ++i) {
    const auto link = exitLinkOf(*records.waypoints[i]);
    if (!link || facts.knownById(link->waypointId) == none<KnownIndex>) continue;
    reader.addVirtual(WaypointIndex{static_cast<std::uint32_t>(i)}, link->waypointId);
  }
}

void readPaths(const GridRecords& records, VenueFacts& facts) {
  const TernASGrid::Paths& paths = records.paths;
  PathReader reader(facts, paths.size());
  for (std::size_t i = 0; i < paths.size(); ++i) {
    if (i + fetchDistance < paths.size()) fetchRecord(*paths[i + fetchDistance]);
    reader.add(*paths[i]);
  }
  facts.paths.recordCount = static_cast<std::uint32_t>(paths.size());
  if (records.isForMultiVenue) joinVenues(records, facts, reader);
  reader.close();
}

void rankPathTypes(VenueFacts& facts) {
  std::map<std::int64_t, std::int64_t> accessibilityById;
  for (const PathRule& rule : facts.rules) {
    accessibilityById[rule.type.integer()] = rule.facts.accessibility.integer();
  }
  for (const auto& [id, accessibility] : accessibilityById) {
    facts.ranks.push_back({id, accessibility});
  }
  std::ranges::stable_sort(facts.ranks, {}, &RankedType::accessibility);
  std::map<std::int64_t, TypeRank> rankById;
  for (TypeRank rank{0}; rank < facts.ranks.endIndex(); ++rank) {
    rankById[facts.ranks[rank].typeId] = rank;
  }
  for (PathRule& rule : facts.rules) rule.rank = rankById[rule.type.integer()];
}

}  // namespace

VenueFacts readVenue(const GridRecords& records) {
  VenueFacts facts;
  facts.isForMultiVenue = records.isForMultiVenue;
  facts.floors = FloorIndex(records.buildings, TernASGrid::verticalScale);
  readWaypoints(records, facts);
  readPathTypes(records.pathTypes, facts);
  readPaths(records, facts);
  rankPathTypes(facts);
  return facts;
}

}  // namespace tern::detail
