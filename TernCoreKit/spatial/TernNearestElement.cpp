#include "TernCoreKit/spatial/TernNearestElement.hpp"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"

namespace tern {

namespace {

using MapId = std::optional<std::int64_t>;
using Kind = TernElement::Kind;

constexpr auto wrongKindMessage = "element must be TernDestination or TernAmenity or TernPathType";
// Spelled so on purpose: callers may know the text.
constexpr auto noTreeMessage = "k-d tree is not initialzed yet";
constexpr auto noFloorMessage = "current floor or map not found";
constexpr auto notFoundMessage = "element not found";
constexpr auto noConnectorMessage = "No path type found to reach to the searched element";

std::optional<std::int64_t> idOf(const Value& id) {
  if (id.isAbsent() || id.isNull()) return std::nullopt;
  return id.integer();
}

std::string keyOf(const MapId& mapId) { return mapId ? std::to_string(*mapId) : std::string(); }

TernNearestPoint pointOf(const std::shared_ptr<TernWaypoint>& waypoint,
                         std::shared_ptr<TernBaseModel> element = nullptr) {
  const double x = waypoint->coordinate(0).number();
  const double y = waypoint->coordinate(waypoint->coordinates.size() - 1).number();
  return {x, y, idOf(waypoint->mapId), std::move(element), waypoint};
}

template <class Trees>
auto treeOn(const Trees& trees, const MapId& mapId) {
  const auto tree = trees.find(keyOf(mapId));
  return tree != trees.end() ? std::optional(tree->second) : std::nullopt;
}

std::shared_ptr<TernFloor> floorOf(const TernVenueData& venue,
                                   const std::shared_ptr<TernMap>& map) {
  return venue.buildings ? venue.buildings->getFloorByMap(map) : nullptr;
}

std::shared_ptr<TernFloor> floorAt(const TernVenueData& venue, std::int64_t level) {
  if (!venue.buildings) return nullptr;
  for (auto& floor : venue.buildings->getAllFloors()) {
    if (!floor->level.isAbsent() && floor->level.integer() == level) return floor;
  }
  return nullptr;
}

std::int64_t levelBeside(std::int64_t level, bool isUpward) {
  // Past the greatest integer comes the least.
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(level) + (isUpward ? 1U : ~0ULL));
}

// The waypoint of the other map to which the connector leads.
std::shared_ptr<TernWaypoint> connectedWaypoint(const TernNearestPoint& connector,
                                                const TernMap& from, const TernMap& to) {
  if (!from.paths || !to.waypoints) return nullptr;
  const std::int64_t typeId = connector.element->id.integer();
  for (const auto& path : from.paths->getByWaypoint(connector.waypoint)) {
    if (path->pathTypeId.integer() != typeId) continue;
    for (const Value& id : path->waypointIds.items()) {
      if (auto waypoint = to.waypoints->getById(id.integer())) return waypoint;
    }
  }
  return nullptr;
}

std::optional<TernCoordinate> placeOf(const TernWaypoint& waypoint) {
  const Value& x = waypoint.coordinate(0);
  const Value& y = waypoint.coordinate(1);
  if (waypoint.coordinates.size() != 2 || !x.isNumber() || !y.isNumber()) return std::nullopt;
  return TernCoordinate{x.number(), y.number()};
}

float legLength(const TernWaypoint& from, const TernWaypoint& to) {
  if (idOf(from.id) == idOf(to.id) || idOf(from.mapId) != idOf(to.mapId)) return 0;
  const auto start = placeOf(from);
  const auto end = placeOf(to);
  return start && end ? TernUtils::distanceBetweenPoint1(*start, *end) : 0;
}

}  // namespace

std::shared_ptr<TernNearestElement> TernNearestElement::init() {
  return std::make_shared<TernNearestElement>();
}

void TernNearestElement::initializeKDTree(const std::shared_ptr<TernVenueData>& venue) {
  activeVenue_ = venue;
  for (Trees* trees : {&treesDestination_, &treesAmenity_, &treesPathType_}) trees->clear();
  if (venue == nullptr || venue->maps == nullptr) return;
  for (const TernMap& map : venue->maps->each()) {
    const std::string key = keyOf(idOf(map.id));
    for (Trees* trees : {&treesDestination_, &treesAmenity_, &treesPathType_}) (*trees)[key];
  }
  plant(treesDestination_, venue->destinations.get());
  plant(treesAmenity_, venue->amenities.get());
  plant(treesPathType_, venue->pathTypes.get());
}

// An element counts on the maps that its locations name, with its waypoints there.
template <class Collection>
void TernNearestElement::plant(Trees& trees, const Collection* collection) const {
  if (collection == nullptr) return;
  std::unordered_map<std::string, std::vector<TernNearestPoint>> points;
  for (const auto& element : collection->getAll()) {
    std::set<std::int64_t> mapIds;
    for (const auto& location : element->locations) mapIds.insert(location->mapId.integer());
    for (const auto& waypoint : element->waypoints) {
      if (waypoint == nullptr || !mapIds.contains(waypoint->mapId.integer())) continue;
      points[keyOf(idOf(waypoint->mapId))].push_back(pointOf(waypoint, element));
    }
  }
  for (auto& [key, tree] : trees) tree = Tree::init(points[key]);
}

const TernNearestElement::Trees& TernNearestElement::treesOf(Kind kind) const {
  if (kind == Kind::destination) return treesDestination_;
  return kind == Kind::amenity ? treesAmenity_ : treesPathType_;
}

bool TernNearestElement::canSearchFor(const Elements& elements) {
  arrayOfPathTypeTaken_.clear();
  tree_.reset();
  const auto isOther = [](const TernElement& element) { return element.kind == Kind::other; };
  if (elements.empty() || std::ranges::any_of(elements, isOther)) {
    fail(TernErrorTypeIncorrectObjectType, wrongKindMessage);
    return false;
  }
  if (!activeVenue_.expired()) return true;
  fail(TernErrorTypeObjectNotFound, noTreeMessage);
  return false;
}

bool TernNearestElement::standsOn(std::shared_ptr<TernMap> map) {
  currentMap_ = std::move(map);
  if (currentMap_ != nullptr && idOf(currentMap_->id)) return true;
  fail(TernErrorTypeIncorrectObjectType, noFloorMessage);
  return false;
}

void TernNearestElement::startAt(TernNearestPoint point, const Elements& elements,
                                 std::int64_t level) {
  wantedKind_ = elements.front().kind;
  wantedIds_.clear();
  for (const TernElement& element : elements) wantedIds_.push_back(idOf(element.record->id));
  std::ranges::sort(wantedIds_);
  treeDestination_ = treeOn(treesDestination_, point.z);
  treeAmenity_ = treeOn(treesAmenity_, point.z);
  treePathType_ = treeOn(treesPathType_, point.z);
  tree_ = treeOn(treesOf(wantedKind_), point.z);
  userNode_ = std::move(point);
  currentFloorLevel_ = level;
}

void TernNearestElement::fail(TernErrorType type, const char* message) {
  error_ = TernError::initWithErrorType(type, message);
}

std::optional<TernNearestResult> TernNearestElement::getNearestElementFrom(
    const std::shared_ptr<TernWaypoint>& from, std::int64_t toMapId, const Elements& elements,
    std::int64_t accessibility) {
  accessible_ = accessibility >= 1 ? 100 : 0;
  if (!canSearchFor(elements)) return std::nullopt;
  const auto venue = activeVenue_.lock();
  const auto mapOf = [&](std::int64_t id) {
    return venue->maps != nullptr ? venue->maps->getById(id) : nullptr;
  };
  if (!standsOn(from != nullptr ? mapOf(from->mapId.integer()) : nullptr)) return std::nullopt;
  auto targetMap = mapOf(toMapId);
  if (targetMap == nullptr) targetMap = std::make_shared<TernMap>();
  auto target = floorOf(*venue, targetMap);
  if (target == nullptr) target = std::make_shared<TernFloor>();
  const auto start = floorOf(*venue, currentMap_);
  if (start == nullptr || start->level.isAbsent()) return std::nullopt;
  startAt(pointOf(from), elements, start->level.integer());
  const auto found =
      targetMap == currentMap_ ? nearestAcceptable(*userNode_) : reach(*venue, *target);
  if (found == nullptr) return std::nullopt;
  return TernNearestResult{found, lengthOfChain(from.get(), found.get())};
}

void TernNearestElement::searchNearestElement(const TernElement& element, TernCoordinate at,
                                              const std::shared_ptr<TernMap>& map,
                                              const Completion& completion) {
  accessible_ = 100;
  const auto found = searchFrom({element}, at, map);
  if (found == nullptr && !error_) fail(TernErrorTypeObjectNotFound, notFoundMessage);
  if (!completion) return;
  if (found != nullptr) {
    completion(found, element, std::nullopt);
  } else {
    // A copy: the completion may start the next search.
    completion(nullptr, std::nullopt, std::optional(error_));
  }
}

std::shared_ptr<TernWaypoint> TernNearestElement::searchFrom(const Elements& elements,
                                                             TernCoordinate at,
                                                             const std::shared_ptr<TernMap>& map) {
  if (!canSearchFor(elements) || !standsOn(map)) return nullptr;
  const auto floor = floorOf(*activeVenue_.lock(), map);
  if (floor == nullptr || floor->level.isAbsent()) {
    fail(TernErrorTypeIncorrectObjectType, noFloorMessage);
    return nullptr;
  }
  startAt({at.x, at.y, idOf(map->id), nullptr, nullptr}, elements, floor->level.integer());
  isUpperFloorValid_ = true;
  isLowerFloorValid_ = true;
  if (!tree_) {
    fail(TernErrorTypeObjectNotFound, noTreeMessage);
    return nullptr;
  }
  auto found = nearestAcceptable(*userNode_);
  return found != nullptr ? found : walkFloors();
}

bool TernNearestElement::isAcceptable(const TernNearestPoint& candidate,
                                      const TernNearestPoint& query) const {
  return candidate.z == query.z &&
         std::ranges::binary_search(wantedIds_, idOf(candidate.element->id)) &&
         (delegate == nullptr || delegate->isConditionPassedWithWaypoint(candidate.waypoint));
}

std::shared_ptr<TernWaypoint> TernNearestElement::nearestAcceptable(
    const TernNearestPoint& query) const {
  if (!tree_) return nullptr;
  const auto found = tree_->nearest(
      query, [&](const TernNearestPoint& candidate) { return isAcceptable(candidate, query); });
  return found ? found->waypoint : nullptr;
}

std::shared_ptr<TernWaypoint> TernNearestElement::walkFloors() {
  std::shared_ptr<TernWaypoint> found;
  std::int64_t up = *currentFloorLevel_;
  std::int64_t down = up;
  while (found == nullptr && (isUpperFloorValid_ || isLowerFloorValid_)) {
    if (isUpperFloorValid_) {
      up = levelBeside(up, true);
      found = searchLevel(up, isUpperFloorValid_);
    }
    if (found == nullptr && isLowerFloorValid_) {
      down = levelBeside(down, false);
      found = searchLevel(down, isLowerFloorValid_);
    }
  }
  return found;
}

std::shared_ptr<TernWaypoint> TernNearestElement::searchLevel(std::int64_t level,
                                                              bool& isFloorValid) {
  const auto venue = activeVenue_.lock();
  const auto floor = venue != nullptr ? floorAt(*venue, level) : nullptr;
  isFloorValid = floor != nullptr;
  if (!isFloorValid || !floor->map) return nullptr;
  TernNearestPoint query = *userNode_;
  query.z = idOf(floor->map->id);
  tree_ = treeOn(treesOf(wantedKind_), query.z);
  return nearestAcceptable(query) != nullptr ? reach(*venue, *floor) : nullptr;
}

bool TernNearestElement::mayTake(const TernNearestPoint& connector) const {
  // The trees of path types hold nothing else.
  const auto& pathType = static_cast<const TernPathType&>(*connector.element);
  return pathType.accessibility.integer() <= accessible_;
}

// Tries the connectors of the start's map, the nearest first.
std::shared_ptr<TernWaypoint> TernNearestElement::reach(const TernVenueData& venue,
                                                        const TernFloor& target) {
  const Tree none;
  const Tree& connectors = treePathType_ ? *treePathType_ : none;
  const auto count = static_cast<std::ptrdiff_t>(connectors.count());
  const auto takeable = [this](const TernNearestPoint& point) { return mayTake(point); };
  for (auto& connector : connectors.nearestK(count, *userNode_, takeable)) {
    arrayOfPathTypeTaken_.clear();
    if (const auto arrival = follow(venue, std::move(connector), target)) {
      tree_ = treeOn(treesOf(wantedKind_), arrival->z);
      return nearestAcceptable(*arrival);
    }
  }
  arrayOfPathTypeTaken_.clear();
  fail(TernErrorTypeObjectNotFound, noConnectorMessage);
  return nullptr;
}

// Where one arrives on the target floor: at once if the connector leads there, else floor by floor,
// always by the nearest connector.
std::optional<TernNearestPoint> TernNearestElement::follow(const TernVenueData& venue,
                                                           TernNearestPoint connector,
                                                           const TernFloor& target) {
  if (const auto arrival = step(connector, *currentMap_, target)) return arrival;
  const auto takeable = [this](const TernNearestPoint& point) { return mayTake(point); };
  std::int64_t level = *currentFloorLevel_;
  std::unordered_set<std::int64_t> entered{level};
  auto map = currentMap_;
  while (true) {
    level = levelBeside(level, level < target.level.integer());
    if (!entered.insert(level).second) return std::nullopt;
    const auto floor = floorAt(venue, level);
    if (floor == nullptr) return std::nullopt;
    const auto arrival = step(connector, *map, *floor);
    if (!arrival || floor.get() == &target) return arrival;
    map = floor->map.record();
    const auto connectors = treeOn(treesPathType_, arrival->z);
    auto next = connectors ? connectors->nearest(*arrival, takeable) : std::nullopt;
    if (!next) return std::nullopt;
    connector = std::move(*next);
  }
}

std::optional<TernNearestPoint> TernNearestElement::step(const TernNearestPoint& connector,
                                                         const TernMap& from, const TernFloor& to) {
  const auto arrived = to.map ? connectedWaypoint(connector, from, *to.map.get()) : nullptr;
  if (arrived == nullptr) return std::nullopt;
  arrayOfPathTypeTaken_.push_back(connector.waypoint);
  arrayOfPathTypeTaken_.push_back(arrived);
  TernNearestPoint arrival = pointOf(arrived);
  arrival.z = idOf(to.map->id);
  return arrival;
}

float TernNearestElement::lengthOfChain(const TernWaypoint* from, const TernWaypoint* found) const {
  float length = 0;
  for (const auto& waypoint : arrayOfPathTypeTaken_) {
    length += legLength(*from, *waypoint);
    from = waypoint.get();
  }
  return length + legLength(*from, *found);
}

void TernNearestElement::reset() {
  for (auto* tree : {&tree_, &treeDestination_, &treeAmenity_, &treePathType_}) tree->reset();
  currentFloorLevel_.reset();
  userNode_.reset();
  activeVenue_.reset();
  currentMap_.reset();
  error_.reset();
  isUpperFloorValid_ = true;
  isLowerFloorValid_ = true;
}

}  // namespace tern
