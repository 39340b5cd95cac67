#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernMapLabelCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"
#include "TernCoreKit/optimisation/TernPOIOptimization.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/platform/WorkQueue.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/spatial/ClosestWaypoint.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "TernCoreKit/wayfinding/VenueGrid.hpp"

namespace tern::inline v5 {

namespace {

void finish(TernActiveVenue& venue, Value&) {
  if (!venue.labelType.isNumber()) {
    venue.labelType = 0;
    // On purpose not a test of `clustering` itself.
    venue.clustering = 0;
  }
  detail::makeNested(venue.coordinates);
  detail::makeCollection(venue.buildings);
  detail::makeCollection(venue.destinations);
  detail::makeCollection(venue.amenities);
  detail::makeCollection(venue.pathTypes);
  detail::makeCollection(venue.mapLabels);
  venue.maps = std::make_shared<TernMapCollection>();
  // Without an id it is no map that anything could refer to.
  if (venue.map.plain().find("id") != nullptr) {
    venue.maps->create(venue.map.takePlain());
    venue.map = venue.maps->getAll().front();
  } else if (venue.map.plain().isMap()) {
    logLine("Error in parsing data");
  }
  venue.status = venue.status.isAbsent() || venue.status.flag();
}

template <class Collection>
auto allOf(const Collection* collection) -> decltype(collection->getAll()) {
  if (collection == nullptr) return {};
  return collection->getAll();
}

// Of the lines drawn from point to point, in map units; from one segment to the next there is a
// line too.
float drawnLength(const TernRoute& route) {
  float length = 0;
  std::optional<TernCoordinate> previous;
  for (const TernPathPerFloor& segment : route) {
    for (const TernPoint& drawn : segment.mapPoints) {
      const TernCoordinate point{drawn.x, drawn.y};
      if (previous) length += TernUtils::distanceBetweenPoint1(*previous, point);
      previous = point;
    }
  }
  return length;
}

std::shared_ptr<TernASGrid> gridOf(const TernVenueData& venue) {
  const TernVenueData* data = &venue;
  VenueGridLists lists;
  {
    const MutexLock lock(venue.recordsMutex());
    lists = listRecords({&data, 1});
  }
  return makeGrid(std::move(lists), false);
}

std::shared_ptr<TernNearestElement> treesOf(const std::shared_ptr<TernActiveVenue>& venue) {
  auto made = TernNearestElement::init();
  made->initializeKDTree(venue);
  return made;
}

// Searches know ids of 32 bits.
std::int32_t narrowId(const TernWaypoint& waypoint) {
  return static_cast<std::int32_t>(waypoint.id.integer());
}

}  // namespace

template <>
const detail::FieldTable<TernActiveVenue>& detail::fieldsOf<TernActiveVenue>() {
  using Table = detail::FieldTable<TernActiveVenue>;
  static const detail::Immortal table{Table(
      "TernActiveVenue",
      {Table::copied<&TernActiveVenue::id>("id"),
       Table::copied<&TernActiveVenue::externalId>("externalId"),
       Table::copied<&TernActiveVenue::name>("name"),
       Table::copied<&TernActiveVenue::coordinates>("coordinates"),
       Table::copied<&TernActiveVenue::buildings>("buildings"),
       Table::copied<&TernActiveVenue::destinations>("destinations"),
       Table::copied<&TernActiveVenue::amenities>("amenities"),
       Table::copied<&TernActiveVenue::pathTypes>("pathTypes"),
       Table::copied<&TernActiveVenue::mapLabels>("mapLabels"),
       Table::copied<&TernActiveVenue::map>("map"),
       Table::copied<&TernActiveVenue::defaultMapTemplateId>("defaultMapTemplateId"),
       Table::copied<&TernActiveVenue::mapTemplateData>("mapTemplateData"),
       Table::uncopied<&TernActiveVenue::extensors>("extensors"),
       Table::uncopied<&TernActiveVenue::status>("status"),
       Table::uncopied<&TernActiveVenue::customerId>("customerId"),
       Table::uncopied<&TernActiveVenue::generatedAt>("generatedAt"),
       Table::uncopied<&TernActiveVenue::labelType>("labelType"),
       Table::uncopied<&TernActiveVenue::clustering>("clustering"),
       // Made by the venue, never of its document.
       Table::ignored("maps"), Table::ignored("nearestElement"), Table::ignored("globalASGrid")},
      finish)};
  return table.value;
}

std::shared_ptr<TernActiveVenue> TernActiveVenue::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernActiveVenue>().make(std::move(dictionary));
}

std::shared_ptr<TernActiveVenue> TernActiveVenue::copyWithZone() const {
  return detail::fieldsOf<TernActiveVenue>().copy(*this);
}

std::shared_ptr<TernASGrid> TernActiveVenue::globalASGrid() const {
  const MutexLock lock(gridMutex_);
  return globalASGrid_;
}

void TernActiveVenue::loadGridData() {
  auto grid = gridOf(*this);
  // The graph that is replaced goes away outside the lock.
  const MutexLock lock(gridMutex_);
  globalASGrid_.swap(grid);
}

std::shared_ptr<TernNearestElement> TernActiveVenue::nearestElement() const {
  const MutexLock lock(gridMutex_);
  return nearestElement_;
}

void TernActiveVenue::loadKDTree() {
  const auto replaced = nearestElement();
  std::unique_lock<std::recursive_mutex> replacedLock;
  if (replaced != nullptr) replacedLock = std::unique_lock(replaced->mutex());
  auto made = treesOf(weak_from_this().lock());
  const MutexLock lock(gridMutex_);
  nearestElement_.swap(made);
}

void TernActiveVenue::updateWayfindDataWithCompletion(std::function<void(bool)> completion) {
  auto venue = weak_from_this().lock();
  if (venue == nullptr) return rebuild(completion);
  const auto begin = [&](const auto& kept) {
    backgroundQueue()->run([venue, kept] { venue->rebuild(kept.get()); });
  };
  detail::attemptWith(std::move(completion), begin, [](const auto& ended) {
    if (ended) ended(false);
  });
}

void TernActiveVenue::rebuild(const std::function<void(bool)>& completion) {
  const auto replaced = globalASGrid();
  std::unique_lock<std::recursive_mutex> lock;
  if (replaced != nullptr) lock = std::unique_lock(replaced->mutex());
  const bool isBuilt = detail::attempt([this] { replaceGridAndTrees(); });
  if (completion) completion(isBuilt);
}

// Both or neither.
void TernActiveVenue::replaceGridAndTrees() {
  const auto replaced = nearestElement();
  std::unique_lock<std::recursive_mutex> replacedLock;
  if (replaced != nullptr) replacedLock = std::unique_lock(replaced->mutex());
  auto grid = gridOf(*this);
  auto trees = treesOf(weak_from_this().lock());
  const MutexLock lock(gridMutex_);
  globalASGrid_.swap(grid);
  nearestElement_.swap(trees);
}

TernRoute TernActiveVenue::wayfind(const std::shared_ptr<TernWaypoint>& start,
                                   const std::shared_ptr<TernWaypoint>& to,
                                   std::int64_t accessibility) const {
  if (start == nullptr || to == nullptr) return {};
  TernASSearch search;
  search.grid = globalASGrid();
  search.maps = maps;
  return search.route(narrowId(*start), narrowId(*to), accessibility).value_or(TernRoute());
}

void TernActiveVenue::wayfind(const std::shared_ptr<TernWaypoint>& start,
                              const std::shared_ptr<TernWaypoint>& to, const Value& options,
                              std::int64_t accessibility,
                              const TernASAlternativePath::Completion& completionHandler) const {
  TernASAlternativePath finder;
  finder.grid = globalASGrid();
  finder.maps = maps;
  finder.wayfind(start, to, options, accessibility, completionHandler);
}

void TernActiveVenue::wayfindToMultipleDestinations(
    const TernPOIOptimization::Destinations& toDestinations,
    const std::shared_ptr<TernWaypoint>& fromStartWayPoint, std::int64_t accessibility,
    const TernPOIOptimization::Completion& completion) const {
  // A venue need not be held by a shared_ptr; the ordering is over before this pointer is.
  const std::shared_ptr<const TernRouting> routing(this, [](const TernRouting*) {});
  const auto nearest = nearestElement();
  TernPOIOptimization::initWithActiveVenue(routing, nearest)
      ->wayfindToMultipleDestinations(toDestinations, fromStartWayPoint, accessibility, completion);
}

void TernActiveVenue::searchNearestElement(const TernElement& element, TernCoordinate toCoordinate,
                                           const std::shared_ptr<TernMap>& forMap,
                                           const TernNearestElement::Completion& completion) const {
  auto nearest = nearestElement();
  if (nearest == nullptr) nearest = TernNearestElement::init();
  nearest->searchNearestElement(element, toCoordinate, forMap, completion);
}

std::shared_ptr<TernWaypoint> TernActiveVenue::getClosestWaypointInArray(
    const Waypoints& waypoints, TernCoordinate toCoordinate) {
  return closestWaypoint(waypoints, toCoordinate);
}

std::shared_ptr<TernWaypoint> TernActiveVenue::getClosestWaypointToCoordinateOnMap(
    const std::shared_ptr<TernMap>& map, TernCoordinate coordinate) {
  if (map == nullptr) return nullptr;
  return getClosestWaypointInArray(allOf(map->waypoints.get()), coordinate);
}

std::shared_ptr<TernWaypoint> TernActiveVenue::getClosestWaypointInArray(
    const Waypoints& waypoints, const std::shared_ptr<TernWaypoint>& toWaypoint,
    std::int64_t accessibility) const {
  if (std::ranges::find(waypoints, toWaypoint) != waypoints.end()) return toWaypoint;
  std::shared_ptr<TernWaypoint> best;
  float bestLength = std::numeric_limits<float>::max();
  for (const auto& candidate : waypoints) {
    const TernRoute route = wayfind(candidate, toWaypoint, accessibility);
    if (route.empty()) continue;
    const float length = drawnLength(route);
    if (!(length < bestLength)) continue;
    best = candidate;
    bestLength = length;
  }
  return bestLength > 0 ? best : nullptr;
}

TernCoordinate TernActiveVenue::getCenterCoordinates() const {
  const auto first = maps != nullptr ? maps->getFirst() : nullptr;
  if (first == nullptr) {
    logLine("Invalid venue map.");
    return {};
  }
  const TernCoordinate centre{first->width.number() * 0.5, first->height.number() * 0.5};
  return TernUtils::convertPoint(centre, "tern:local", "EPSG:4326", this);
}

}  // namespace tern
