#include "tests/support/RandomVenue.hpp"

#include <limits>
#include <string>
#include <utility>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::test {

namespace {

constexpr std::int64_t greatest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

Value itemsBatch(Value items) { return Value::map({{"items", std::move(items)}}); }

class Maker {
 public:
  explicit Maker(Tape& tape)
      : tape_(tape),
        isMulti_(tape.oneIn(4)),
        hasOddIds_(tape.oneIn(2)),
        hasOddNumbers_(tape.oneIn(3)),
        isCrowded_(tape.oneIn(3)),
        waypointCount_(1 + tape.below(isCrowded_ ? 8 : 40)) {}

  VenueLists make();

 private:
  std::int64_t waypointId();
  std::int64_t pathTypeId();
  Value anId(std::int64_t id);
  Value ratio(const std::vector<Value>& likely);
  Value place();
  Value waypoint(std::int64_t id, std::int64_t mapId);
  Value floor(std::int64_t id);
  std::shared_ptr<TernPath> path(std::int64_t id);
  std::shared_ptr<TernPathType> pathType(std::int64_t id);
  void addBuildings();
  void addWaypoints();
  template <class Record>
  void disturb(std::vector<std::shared_ptr<Record>>& records);

  Tape& tape_;
  const bool isMulti_;
  const bool hasOddIds_;
  const bool hasOddNumbers_;
  // Many paths between few waypoints.
  const bool isCrowded_;
  const std::size_t waypointCount_;
  std::int64_t nextWaypointId_ = 1;
  std::int64_t nextMapId_ = 1;
  VenueLists lists_;
};

std::int64_t Maker::waypointId() {
  if (hasOddIds_ && tape_.oneIn(16)) {
    return tape_.pick<std::int64_t>({0, 999, -3, greatest, least, 1'000'000'007});
  }
  return 1 + static_cast<std::int64_t>(tape_.below(waypointCount_));
}

std::int64_t Maker::pathTypeId() { return 1 + static_cast<std::int64_t>(tape_.below(5)); }

// Mostly the id, else what a document should not have in its place.
Value Maker::anId(std::int64_t id) {
  if (!hasOddIds_ || !tape_.oneIn(24)) return id;
  return tape_.pick<Value>({0, 1, nullptr, "2", 3.0, 4.5, -3, greatest, least});
}

Value Maker::ratio(const std::vector<Value>& likely) {
  if (hasOddNumbers_ && tape_.oneIn(6)) {
    return tape_.pick<Value>(
        {-1, -2.5, 1e308, -1e308, 3e38, 1e-45, {}, nullptr, "much", 0.1, -0.0});
  }
  return tape_.pick(likely);
}

Value Maker::place() {
  const auto axis = [this]() -> Value {
    if (hasOddNumbers_ && tape_.oneIn(12)) {
      return tape_.pick<Value>({1e30, -1e308, 1e308, 0.1, 1e-30, nullptr, 90, -90, 180});
    }
    // A coarse raster, where places and lengths repeat.
    return static_cast<double>(tape_.below(6)) * (isMulti_ ? 0.25 : 10);
  };
  Value coordinates = Value::list({axis(), axis()});
  if (hasOddNumbers_ && tape_.oneIn(24)) {
    return tape_.pick<Value>({{}, 7, Value::list(), Value::list({3.5})});
  }
  return coordinates;
}

Value Maker::waypoint(std::int64_t id, std::int64_t mapId) {
  Value made = Value::map({{"id", anId(id)}, {"mapId", anId(mapId)}, {"coordinates", place()}});
  if (hasOddIds_ && tape_.oneIn(24)) {
    // Without an id the first key's value is what it is found under.
    made = Value::map({{"mapId", mapId}, {"coordinates", place()}});
  }
  if (tape_.oneIn(4)) {
    const std::string other = std::to_string(waypointId());
    made.set("externalId", tape_.pick<Value>({"exit:" + other, "a:b:" + other, other + ":", ":x",
                                              "c:" + other + "d", "plain", 7}));
  }
  return made;
}

Value Maker::floor(std::int64_t id) {
  const std::int64_t mapId = hasOddIds_ && tape_.oneIn(8) ? 1 : nextMapId_++;
  Value waypoints = Value::list();
  const std::size_t share = 1 + tape_.below(waypointCount_);
  for (std::size_t i = 0; i < share; ++i) {
    const bool repeats = hasOddIds_ && tape_.oneIn(8);
    waypoints.append(waypoint(repeats ? waypointId() : nextWaypointId_++, mapId));
  }
  Value made = Value::map({{"id", id}});
  if (!tape_.oneIn(8)) made.set("level", static_cast<int>(tape_.below(4)));
  if (hasOddNumbers_ && tape_.oneIn(6)) {
    made.set("level", tape_.pick<Value>({nullptr, -1, 1.75, "1", 1'000'000'000'000}));
  }
  if (tape_.oneIn(3)) made.set("preference", tape_.pick<Value>({0, 1, -1, -2, 2, -3, nullptr}));
  if (hasOddIds_ && tape_.oneIn(12)) return made;
  made.set("map", Value::map({{"id", anId(mapId)},
                              {"mmPerPixel", ratio({100, 0.5, 21.7})},
                              {"waypoints", itemsBatch(std::move(waypoints))}}));
  return made;
}

void Maker::addBuildings() {
  const std::size_t buildings = 1 + tape_.below(3);
  for (std::size_t building = 0; building < buildings; ++building) {
    Value floors = Value::list();
    const std::size_t count = 1 + tape_.below(3);
    for (std::size_t i = 0;
         i < count && nextWaypointId_ <= static_cast<std::int64_t>(waypointCount_); ++i) {
      floors.append(floor(static_cast<std::int64_t>(i)));
    }
    lists_.buildings.push_back(TernBuilding::initWithDictionary(Value::map(
        {{"id", static_cast<int>(building)}, {"floors", itemsBatch(std::move(floors))}})));
    if (!lists_.buildings.back()->floors) continue;
    for (const auto& made : lists_.buildings.back()->floors->getAll()) {
      if (made->map) lists_.maps.push_back(made->map.record());
    }
  }
}

void Maker::addWaypoints() {
  for (const auto& map : lists_.maps) {
    if (!map->waypoints) continue;
    const auto some = map->waypoints->getAll();
    lists_.waypoints.insert(lists_.waypoints.end(), some.begin(), some.end());
  }
  if (!hasOddIds_) return;
  // Some that no map has.
  for (std::size_t i = tape_.below(3); i > 0; --i) {
    lists_.waypoints.push_back(
        TernWaypoint::initWithDictionary(waypoint(waypointId(), waypointId())));
  }
}

std::shared_ptr<TernPath> Maker::path(std::int64_t id) {
  Value waypointIds = Value::list();
  const std::size_t ends = tape_.oneIn(6) ? 1 + tape_.below(5) : 2;
  for (std::size_t i = 0; i < ends; ++i) waypointIds.append(anId(waypointId()));
  Value made = Value::map({{"id", anId(id)},
                           {"pathTypeId", anId(pathTypeId())},
                           {"waypointIds", std::move(waypointIds)}});
  if (tape_.oneIn(3)) made.set("direction", tape_.pick<Value>({1, 2, 0, 3, nullptr}));
  return TernPath::initWithDictionary(std::move(made));
}

std::shared_ptr<TernPathType> Maker::pathType(std::int64_t id) {
  return TernPathType::initWithDictionary(
      Value::map({{"id", anId(id)},
                  {"weight", ratio({1, 0, 2, 0.1, 7.25})},
                  {"accessibility", ratio({0, 1, 2, 100, -1})},
                  {"verticalWeight", ratio({0, 1, -1, 3, 0.5})}}));
}

// Drops, repeats and moves records, and puts a null between them.
template <class Record>
void Maker::disturb(std::vector<std::shared_ptr<Record>>& records) {
  if (!hasOddIds_ || !tape_.oneIn(3)) return;
  for (std::size_t i = tape_.below(4); i > 0 && !records.empty(); --i) {
    const std::size_t at = tape_.below(std::min<std::size_t>(records.size(), 256));
    const std::size_t other = tape_.below(std::min<std::size_t>(records.size(), 256));
    const auto chosen = records[at];
    switch (tape_.below(4)) {
      case 0:
        records.push_back(chosen);
        break;
      case 1:
        std::swap(records[at], records[other]);
        break;
      case 2:
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(at));
        break;
      default:
        records.insert(records.begin() + static_cast<std::ptrdiff_t>(at), nullptr);
    }
  }
}

VenueLists Maker::make() {
  lists_.isForMultiVenue = isMulti_;
  addBuildings();
  addWaypoints();
  const std::size_t types = 1 + tape_.below(7);
  for (std::size_t i = 0; i < types; ++i) {
    // Beyond the fifth they repeat an id that there is.
    lists_.pathTypes.push_back(pathType(1 + static_cast<std::int64_t>(i % 5)));
  }
  const std::size_t paths = tape_.below(isCrowded_ ? 40 : 100);
  for (std::size_t i = 0; i < paths; ++i) {
    lists_.paths.push_back(path(100 + static_cast<std::int64_t>(i)));
  }
  disturb(lists_.waypoints);
  disturb(lists_.paths);
  disturb(lists_.pathTypes);
  disturb(lists_.maps);
  disturb(lists_.buildings);
  return std::move(lists_);
}

}  // namespace

std::size_t Tape::below(std::size_t count) {
  const std::size_t drawn = next_ < bytes_.size() ? bytes_[next_] : 0;
  ++next_;
  return drawn % count;
}

rc::Gen<std::vector<std::uint8_t>> tapes() {
  constexpr int longest = 1500;
  return rc::gen::resize(longest, rc::gen::arbitrary<std::vector<std::uint8_t>>());
}

VenueLists randomVenue(Tape& tape) { return Maker(tape).make(); }

std::int64_t randomWaypointId(Tape& tape, const VenueLists& lists) {
  if (lists.waypoints.empty() || tape.oneIn(32)) return tape.pick<std::int64_t>({0, 999, -3});
  const auto& chosen =
      lists.waypoints[tape.below(std::min<std::size_t>(lists.waypoints.size(), 256))];
  return chosen != nullptr ? chosen->id.integer() : 0;
}

std::int64_t randomAccessLevel(Tape& tape) {
  return tape.pick<std::int64_t>({100, 0, 1, 2, -1, greatest, least});
}

std::shared_ptr<TernMapCollection> collect(const TernASGrid::Maps& maps) {
  auto collection = std::make_shared<TernMapCollection>();
  for (const auto& map : maps) collection->addMapToCollection(map);
  return collection;
}

}  // namespace tern::test
