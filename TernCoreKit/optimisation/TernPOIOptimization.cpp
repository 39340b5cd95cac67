#include "TernCoreKit/optimisation/TernPOIOptimization.hpp"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "TernCoreKit/optimisation/detail/OrderingRun.hpp"
#include "TernCoreKit/optimisation/detail/TourTables.hpp"
#include "TernCoreKit/optimisation/detail/WaypointSelection.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5 {

namespace {

TernPOIOptimization::Destinations withoutRepeats(
    const TernPOIOptimization::Destinations& destinations) {
  std::unordered_set<std::shared_ptr<TernDestination>> seen = {nullptr};
  TernPOIOptimization::Destinations first;
  for (const auto& destination : destinations) {
    if (seen.insert(destination).second) first.push_back(destination);
  }
  return first;
}

}  // namespace

std::shared_ptr<TernPOIOptimization> TernPOIOptimization::initWithActiveVenue(
    std::weak_ptr<const TernRouting> activeVenue,
    std::weak_ptr<TernNearestElement> nearestElement) {
  return std::shared_ptr<TernPOIOptimization>(
      new TernPOIOptimization(std::move(activeVenue), std::move(nearestElement)));
}

TernPOIOptimization::TernPOIOptimization(std::weak_ptr<const TernRouting> activeVenue,
                                         std::weak_ptr<TernNearestElement> nearestElement)
    : activeVenue_(std::move(activeVenue)),
      searchElement_(std::move(nearestElement)),
      tables_(std::make_unique<detail::TourTables>()) {}

TernPOIOptimization::~TernPOIOptimization() = default;

void TernPOIOptimization::wayfindToMultipleDestinations(
    const Destinations& destinations, const std::shared_ptr<TernWaypoint>& fromStartPoint,
    std::int64_t accessibility, const Completion& completion) {
  Legs legs;
  Destinations order;
  bool isPlanned = false;
  const auto plan = [&] {
    isPlanned = planTour(destinations, fromStartPoint, accessibility, legs, order);
  };
  if (!detail::attempt(plan) || !isPlanned) {
    logSdk("out of memory: no tour");
    forgetTour();
    legs.clear();
    order.clear();
  }
  if (completion) completion(std::move(legs), std::move(order));
}

void TernPOIOptimization::forgetTour() {
  *tables_ = {};
  searchElementConditionWaypoints_.clear();
}

bool TernPOIOptimization::planTour(const Destinations& destinations,
                                   const std::shared_ptr<TernWaypoint>& fromStartPoint,
                                   std::int64_t accessibility, Legs& legs, Destinations& order) {
  forgetTour();
  if (fromStartPoint == nullptr) return true;
  const auto venue = activeVenue_.lock();
  const auto shared = searchElement_.lock();
  // A search of its own: what the tour accepts is no concern of whoever else searches.
  const auto search = shared != nullptr ? shared->another() : nullptr;
  if (search != nullptr) search->delegate = shared_from_this();
  tables_->startWayPoint = fromStartPoint;
  tables_->arrange(withoutRepeats(destinations));
  detail::OrderingRun run(venue.get(), search.get(), accessibility, *tables_,
                          searchElementConditionWaypoints_);
  run.createPriorityLevelScore();
  detail::WaypointSelection(*tables_).selectWaypointsOfDestinations();
  run.getOptimalOrderOfDestinations();
  order = run.getDestinationOrderFor(tables_->finalOrderOfWaypoints);
  legs = run.generatePathPerFloorFor(tables_->finalOrderOfWaypoints);
  return !run.hasRunOut();
}

bool TernPOIOptimization::isConditionPassedWithWaypoint(
    const std::shared_ptr<TernWaypoint>& waypoint) {
  const auto& allowed = searchElementConditionWaypoints_;
  return allowed.empty() || std::ranges::find(allowed, waypoint) != allowed.end();
}

std::shared_ptr<TernDestination> TernPOIOptimization::getDesinationById(std::int64_t id) const {
  return tables_->getDesinationById(id);
}

std::shared_ptr<TernDestination> TernPOIOptimization::getbyWayPointId(std::int64_t id) const {
  return tables_->getbyWayPointId(id);
}

std::shared_ptr<TernWaypoint> TernPOIOptimization::getWayPointById(
    std::int64_t id, const TernDestination& forDestination) {
  return detail::waypointOf(forDestination, id);
}

std::int64_t TernPOIOptimization::getScore(std::int64_t mapId) const {
  return tables_->getScore(mapId);
}

bool TernPOIOptimization::isReachable(std::int64_t mapId) const {
  return tables_->isReachable(mapId);
}

bool TernPOIOptimization::isAllVisited() const { return tables_->isAllVisited(); }

const TernPOIOptimization::Waypoints& TernPOIOptimization::finalOrderOfWaypoints() const {
  return tables_->finalOrderOfWaypoints;
}

TernRoute TernPOIOptimization::wayfindWithinArray(const TernWaypoint& from, const Waypoints& to,
                                                  std::int64_t accessibility) const {
  const auto venue = activeVenue_.lock();
  return venue != nullptr ? detail::routeWithinArray(*venue, from, to, accessibility) : TernRoute();
}

}  // namespace tern
