#include "TernCoreKit/spatial/detail/NearestQuestion.hpp"

#include <algorithm>
#include <mutex>
#include <unordered_set>
#include <utility>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/spatial/ClosestWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "TernCoreKit/wayfinding/TernRouting.hpp"

namespace tern::inline v5::detail {

namespace {

constexpr auto wrongKindMessage = "element must be TernDestination or TernAmenity or TernPathType";
// Spelled so on purpose: callers may know the text.
constexpr auto noTreeMessage = "k-d tree is not initialzed yet";
constexpr auto noFloorMessage = "current floor or map not found";
constexpr auto notFoundMessage = "element not found";
constexpr auto noConnectorMessage = "No path type found to reach to the searched element";

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

std::optional<TernCoordinate> placedAt(const TernWaypoint& waypoint) {
  const Value& x = waypoint.coordinate(0);
  const Value& y = waypoint.coordinate(1);
  if (waypoint.coordinates.size() != 2 || !x.isNumber() || !y.isNumber()) return std::nullopt;
  return TernCoordinate{x.number(), y.number()};
}

float legLength(const TernWaypoint& from, const TernWaypoint& to) {
  if (idOf(from.id) == idOf(to.id) || idOf(from.mapId) != idOf(to.mapId)) return 0;
  const auto start = placedAt(from);
  const auto end = placedAt(to);
  return start && end ? TernUtils::distanceBetweenPoint1(*start, *end) : 0;
}

}  // namespace

// What the index does not know may have come into the venue later, and may be coming now.
std::shared_ptr<TernMap> NearestQuestion::mapById(std::int64_t id) const {
  if (venue_->maps == nullptr) return nullptr;
  if (auto known = index_.mapById(id)) return known;
  return venue_->maps->getById(id);
}

std::shared_ptr<TernFloor> NearestQuestion::floorByMap(const std::shared_ptr<TernMap>& map) const {
  if (!venue_->buildings || !idOf(map->id)) return nullptr;
  if (auto known = index_.floorByMap(*map)) return known;
  const MutexLock lock(venue_->recordsMutex());
  return venue_->buildings->getFloorByMap(map);
}

bool NearestQuestion::canSearchFor(const TernNearestElement::Elements& elements) {
  state_.arrayOfPathTypeTaken.clear();
  state_.tree.reset();
  const auto isOther = [](const TernElement& element) { return element.kind == Kind::other; };
  if (elements.empty() || std::ranges::any_of(elements, isOther)) {
    fail(TernErrorTypeIncorrectObjectType, wrongKindMessage);
    return false;
  }
  if (venue_ != nullptr) return true;
  fail(TernErrorTypeObjectNotFound, noTreeMessage);
  return false;
}

bool NearestQuestion::standsOn(std::shared_ptr<TernMap> map) {
  state_.currentMap = std::move(map);
  if (state_.currentMap != nullptr && idOf(state_.currentMap->id)) return true;
  fail(TernErrorTypeIncorrectObjectType, noFloorMessage);
  return false;
}

void NearestQuestion::startAt(TernNearestPoint point, const TernNearestElement::Elements& elements,
                              std::int64_t level) {
  wantedKind_ = elements.front().kind;
  for (const TernElement& element : elements) wantedIds_.push_back(idOf(element.record->id));
  std::ranges::sort(wantedIds_);
  state_.treeDestination = index_.treeOn(Kind::destination, point.z);
  state_.treeAmenity = index_.treeOn(Kind::amenity, point.z);
  state_.treePathType = index_.treeOn(Kind::pathType, point.z);
  state_.tree = index_.treeOn(wantedKind_, point.z);
  state_.userNode = TernUserNode{std::move(point), elements};
  state_.currentFloorLevel = level;
}

void NearestQuestion::fail(TernErrorType type, const char* message) {
  state_.error = TernError::initWithErrorType(type, message);
}

std::optional<TernNearestResult> NearestQuestion::nearestOnMap(
    const std::shared_ptr<TernWaypoint>& from, std::int64_t toMapId,
    const TernNearestElement::Elements& elements, std::int64_t accessibility) {
  state_.accessible = accessibility >= 1 ? 100 : 0;
  from_ = from;
  routeLevel_ = accessibility;
  if (!canSearchFor(elements)) return std::nullopt;
  if (!standsOn(from != nullptr ? mapById(from->mapId.integer()) : nullptr)) return std::nullopt;
  auto targetMap = mapById(toMapId);
  if (targetMap == nullptr) targetMap = std::make_shared<TernMap>();
  auto target = floorByMap(targetMap);
  if (target == nullptr) target = std::make_shared<TernFloor>();
  const auto start = floorByMap(state_.currentMap);
  if (start == nullptr || start->level.isAbsent()) return std::nullopt;
  startAt(pointOf(from), elements, start->level.integer());
  const auto found = targetMap == state_.currentMap ? nearestAcceptable(*state_.userNode)
                                                    : reach(*target, idOf(targetMap->id));
  if (found == nullptr) return std::nullopt;
  return TernNearestResult{found, lengthOfChain(from.get(), found.get())};
}

std::shared_ptr<TernWaypoint> NearestQuestion::nearestTo(TernCoordinate at,
                                                         const std::shared_ptr<TernMap>& map,
                                                         const TernElement& element) {
  state_.accessible = 100;
  auto found = startAndWalk(at, map, element);
  if (found == nullptr && !state_.error) fail(TernErrorTypeObjectNotFound, notFoundMessage);
  return found;
}

std::shared_ptr<TernWaypoint> NearestQuestion::startAndWalk(TernCoordinate at,
                                                            const std::shared_ptr<TernMap>& map,
                                                            const TernElement& element) {
  const TernNearestElement::Elements elements(1, element);
  if (!canSearchFor(elements) || !standsOn(map)) return nullptr;
  const auto floor = floorByMap(map);
  if (floor == nullptr || floor->level.isAbsent()) {
    fail(TernErrorTypeIncorrectObjectType, noFloorMessage);
    return nullptr;
  }
  startAt({at.x, at.y, idOf(map->id), nullptr, nullptr}, elements, floor->level.integer());
  state_.isUpperFloorValid = true;
  state_.isLowerFloorValid = true;
  if (!state_.tree) {
    fail(TernErrorTypeObjectNotFound, noTreeMessage);
    return nullptr;
  }
  auto found = nearestAcceptable(*state_.userNode);
  return found != nullptr ? found : walkFloors();
}

bool NearestQuestion::isAcceptable(const TernNearestPoint& candidate,
                                   const TernNearestPoint& query) const {
  return candidate.z == query.z &&
         std::ranges::binary_search(wantedIds_, idOf(candidate.element->id)) &&
         (delegate_ == nullptr || delegate_->isConditionPassedWithWaypoint(candidate.waypoint));
}

std::shared_ptr<TernWaypoint> NearestQuestion::nearestAcceptable(
    const TernNearestPoint& query) const {
  if (!state_.tree) return nullptr;
  const auto found = state_.tree->nearest(
      query, [&](const TernNearestPoint& candidate) { return isAcceptable(candidate, query); });
  return found ? found->waypoint : nullptr;
}

// Up and down in turn; what is left then are the floors of the start's own level in other
// buildings.
std::shared_ptr<TernWaypoint> NearestQuestion::walkFloors() {
  std::shared_ptr<TernWaypoint> found;
  std::int64_t up = *state_.currentFloorLevel;
  std::int64_t down = up;
  while (found == nullptr && (state_.isUpperFloorValid || state_.isLowerFloorValid)) {
    if (state_.isUpperFloorValid) {
      up = levelBeside(up, true);
      found = searchLevel(up, state_.isUpperFloorValid);
    }
    if (found == nullptr && state_.isLowerFloorValid) {
      down = levelBeside(down, false);
      found = searchLevel(down, state_.isLowerFloorValid);
    }
  }
  if (found != nullptr) return found;
  bool isFloorValid = true;
  return searchLevel(*state_.currentFloorLevel, isFloorValid);
}

std::shared_ptr<TernWaypoint> NearestQuestion::searchLevel(std::int64_t level, bool& isFloorValid) {
  const auto floors = index_.floorsAt(level, *state_.currentMap);
  isFloorValid = !floors.empty();
  for (const auto& floor : floors) {
    if (auto found = searchFloor(*floor)) return found;
  }
  return nullptr;
}

std::shared_ptr<TernWaypoint> NearestQuestion::searchFloor(const TernFloor& floor) {
  if (!floor.map) return nullptr;
  TernNearestPoint query = *state_.userNode;
  query.z = idOf(floor.map->id);
  state_.tree = index_.treeOn(wantedKind_, query.z);
  return nearestAcceptable(query) != nullptr ? reach(floor, query.z) : nullptr;
}

bool NearestQuestion::mayTake(const TernNearestPoint& connector) const {
  // The trees of path types hold nothing else.
  const auto& pathType = static_cast<const TernPathType&>(*connector.element);
  return pathType.accessibility.integer() <= state_.accessible;
}

// Tries the connectors of the start's map, the nearest first.
std::shared_ptr<TernWaypoint> NearestQuestion::reach(const TernFloor& target,
                                                     std::optional<std::int64_t> mapId) {
  const NearestIndex::Tree connectors = state_.treePathType.value_or(NearestIndex::Tree());
  const auto count = static_cast<std::ptrdiff_t>(connectors.count());
  const auto takeable = [this](const TernNearestPoint& point) { return mayTake(point); };
  for (auto& connector : connectors.nearestK(count, *state_.userNode, takeable)) {
    state_.arrayOfPathTypeTaken.clear();
    if (const auto arrival = follow(std::move(connector), target)) {
      state_.tree = index_.treeOn(wantedKind_, arrival->z);
      return nearestAcceptable(*arrival);
    }
  }
  state_.arrayOfPathTypeTaken.clear();
  auto found = reachByRoute(mapId);
  if (found == nullptr) fail(TernErrorTypeObjectNotFound, noConnectorMessage);
  return found;
}

// Where one arrives on the target floor: at once if the connector leads there, else floor by floor,
// always by the nearest connector.
std::optional<TernNearestPoint> NearestQuestion::follow(TernNearestPoint connector,
                                                        const TernFloor& target) {
  if (const auto arrival = step(connector, *state_.currentMap, target)) return arrival;
  const auto takeable = [this](const TernNearestPoint& point) { return mayTake(point); };
  std::int64_t level = *state_.currentFloorLevel;
  std::unordered_set<std::int64_t> entered{level};
  auto map = state_.currentMap;
  while (true) {
    level = levelBeside(level, level < target.level.integer());
    if (!entered.insert(level).second) return std::nullopt;
    const auto arrival = stepToLevel(connector, *map, level, target);
    if (!arrival) return std::nullopt;
    if (arrival->floor == &target) return arrival->point;
    map = arrival->floor->map.record();
    const auto connectors = index_.treeOn(Kind::pathType, arrival->point.z);
    auto next = connectors ? connectors->nearest(arrival->point, takeable) : std::nullopt;
    if (!next) return std::nullopt;
    connector = std::move(*next);
  }
}

// The target is entered before the other floors of its level.
std::optional<NearestQuestion::Arrival> NearestQuestion::stepToLevel(
    const TernNearestPoint& connector, const TernMap& from, std::int64_t level,
    const TernFloor& target) {
  if (target.level.integer() == level) {
    if (auto point = step(connector, from, target)) return Arrival{std::move(*point), &target};
  }
  for (const auto& floor : index_.floorsAt(level, *state_.currentMap)) {
    if (auto point = step(connector, from, *floor)) return Arrival{std::move(*point), floor.get()};
  }
  return std::nullopt;
}

std::optional<TernNearestPoint> NearestQuestion::step(const TernNearestPoint& connector,
                                                      const TernMap& from, const TernFloor& to) {
  const auto arrived = to.map ? connectedWaypoint(connector, from, *to.map.get()) : nullptr;
  if (arrived == nullptr) return std::nullopt;
  state_.arrayOfPathTypeTaken.push_back(connector.waypoint);
  state_.arrayOfPathTypeTaken.push_back(arrived);
  TernNearestPoint arrival = pointOf(arrived);
  arrival.z = idOf(to.map->id);
  return arrival;
}

// The acceptable waypoint that is cheapest to reach. Where the route changes maps it takes a
// connector, from the waypoint that it leaves to the one that it enters.
std::shared_ptr<TernWaypoint> NearestQuestion::reachByRoute(std::optional<std::int64_t> mapId) {
  const auto* routing = dynamic_cast<const TernRouting*>(venue_);
  TernASSearch search;
  if (routing != nullptr) search.grid = routing->getGrid();
  const auto start = startOfRoute();
  if (search.grid == nullptr || start == nullptr) return nullptr;
  const auto goals = acceptableOn(mapId);
  const auto route = search.routeToOneOf(start->id.integer(), goals, routeLevel_);
  if (!route) return nullptr;
  for (std::size_t i = 1; i < route->size(); ++i) {
    auto left = search.grid->getWPById((*route)[i - 1].points.back().nodeId());
    auto entered = search.grid->getWPById((*route)[i].points.front().nodeId());
    if (left == nullptr || entered == nullptr) continue;
    state_.arrayOfPathTypeTaken.push_back(std::move(left));
    state_.arrayOfPathTypeTaken.push_back(std::move(entered));
  }
  const std::int64_t reached = route->back().points.back().nodeId();
  return *std::ranges::find_if(
      goals, [reached](const auto& goal) { return goal->id.integer() == reached; });
}

std::shared_ptr<TernWaypoint> NearestQuestion::startOfRoute() const {
  if (from_ != nullptr) return from_;
  const auto& map = *state_.currentMap;
  if (!map.waypoints) return nullptr;
  return closestWaypoint(map.waypoints->getAll(), {state_.userNode->x, state_.userNode->y});
}

TernNearestElement::Waypoints NearestQuestion::acceptableOn(
    std::optional<std::int64_t> mapId) const {
  TernNearestElement::Waypoints acceptable;
  TernNearestPoint query;
  query.z = mapId;
  if (const auto tree = index_.treeOn(wantedKind_, mapId)) {
    tree->forEach([&](const TernNearestPoint& candidate) {
      if (isAcceptable(candidate, query)) acceptable.push_back(candidate.waypoint);
    });
  }
  return acceptable;
}

float NearestQuestion::lengthOfChain(const TernWaypoint* from, const TernWaypoint* found) const {
  float length = 0;
  for (const auto& waypoint : state_.arrayOfPathTypeTaken) {
    length += legLength(*from, *waypoint);
    from = waypoint.get();
  }
  return length + legLength(*from, *found);
}

}  // namespace tern::detail
