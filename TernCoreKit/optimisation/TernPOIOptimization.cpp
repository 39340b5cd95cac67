#include "TernCoreKit/optimisation/TernPOIOptimization.hpp"

#include <algorithm>
#include <mutex>
#include <unordered_set>
#include <utility>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/optimisation/detail/ChainLengths.hpp"
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

TernPOIOptimization::Waypoints withoutNull(TernPOIOptimization::Waypoints waypoints) {
  std::erase(waypoints, nullptr);
  return waypoints;
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
    resetValues();
    tables_->accessible = accessibility;
    tables_->startWayPoint = fromStartPoint;
    setDestinations(destinations);
    isPlanned = run([&](detail::OrderingRun& run) {
      run.createPriorityLevelScore();
      detail::WaypointSelection(*tables_).selectWaypointsOfDestinations();
      run.getOptimalOrderOfDestinations();
      order = run.getDestinationOrderFor(tables_->finalOrderOfWaypoints);
      legs = run.generatePathPerFloorFor(tables_->finalOrderOfWaypoints);
    });
  };
  if (!detail::attempt(plan) || !isPlanned) {
    logSdk("out of memory: no tour");
    resetValues();
    legs.clear();
    order.clear();
  }
  if (completion) completion(std::move(legs), std::move(order));
}

template <class Step>
bool TernPOIOptimization::run(Step step) {
  if (tables_->startWayPoint == nullptr) return true;
  const auto venue = activeVenue_.lock();
  const auto shared = searchElement_.lock();
  // A search of its own: what the tour accepts is no concern of whoever else searches.
  const auto search = shared != nullptr ? shared->another() : nullptr;
  if (search != nullptr) search->delegate = shared_from_this();
  detail::OrderingRun run(venue.get(), search.get(), *tables_);
  step(run);
  return !run.hasRunOut();
}

bool TernPOIOptimization::isConditionPassedWithWaypoint(
    const std::shared_ptr<TernWaypoint>& waypoint) {
  const auto& allowed = tables_->searchElementConditionWaypoints;
  return allowed.empty() || std::ranges::find(allowed, waypoint) != allowed.end();
}

const std::shared_ptr<TernWaypoint>& TernPOIOptimization::startWayPoint() const {
  return tables_->startWayPoint;
}

void TernPOIOptimization::setStartWayPoint(std::shared_ptr<TernWaypoint> waypoint) {
  tables_->startWayPoint = std::move(waypoint);
}

const TernPOIOptimization::Destinations& TernPOIOptimization::destinations() const {
  return tables_->destinations();
}

// Where routes are asked of an active venue, a load may be giving its destinations waypoints.
void TernPOIOptimization::setDestinations(const Destinations& destinations) {
  const auto routing = activeVenue();
  const auto* const venue = dynamic_cast<const TernVenueData*>(routing.get());
  std::unique_lock<Mutex> records;
  if (venue != nullptr) records = std::unique_lock(venue->recordsMutex());
  tables_->arrange(withoutRepeats(destinations));
}

std::int64_t TernPOIOptimization::accessible() const { return tables_->accessible; }

void TernPOIOptimization::setAccessible(std::int64_t accessible) {
  tables_->accessible = accessible;
}

const std::map<std::int64_t, TernTourLevel>& TernPOIOptimization::levelComputedDataDict() const {
  return tables_->levelComputedDataDict;
}

const std::map<std::int64_t, TernTourDestination>&
TernPOIOptimization::intermediateStateOfDestination() const {
  return tables_->intermediateStateOfDestination;
}

const TernPOIOptimization::Waypoints& TernPOIOptimization::finalOrderOfWaypoints() const {
  return tables_->finalOrderOfWaypoints;
}

const TernPOIOptimization::Waypoints& TernPOIOptimization::searchElementConditionWaypoints() const {
  return tables_->searchElementConditionWaypoints;
}

void TernPOIOptimization::setSearchElementConditionWaypoints(Waypoints waypoints) {
  tables_->searchElementConditionWaypoints = std::move(waypoints);
}

const std::map<std::string, TernRoute>& TernPOIOptimization::dictOfTernPathPerFloor() const {
  return tables_->dictOfTernPathPerFloor.routes();
}

const TernTSP::Matrix& TernPOIOptimization::costToPathGraph() const {
  return tables_->costToPathGraph;
}

const std::map<std::int64_t, float>& TernPOIOptimization::intermediateDistanceFromStartNode()
    const {
  return tables_->intermediateDistanceFromStartNode;
}

std::shared_ptr<TernDestination> TernPOIOptimization::getDesinationById(std::int64_t id) const {
  return tables_->getDesinationById(id);
}

std::shared_ptr<TernDestination> TernPOIOptimization::getbyWayPointId(std::int64_t id) const {
  return tables_->getbyWayPointId(id);
}

std::shared_ptr<TernWaypoint> TernPOIOptimization::getWayPointById(
    std::int64_t id, const TernDestination& forDestination) {
  return detail::waypointAmong(forDestination.waypoints, id);
}

std::int64_t TernPOIOptimization::getScore(std::int64_t mapId) const {
  return tables_->getScore(mapId);
}

bool TernPOIOptimization::isReachable(std::int64_t mapId) const {
  return tables_->isReachable(mapId);
}

bool TernPOIOptimization::isAllVisited() const { return tables_->isAllVisited(); }

void TernPOIOptimization::resetValues() { *tables_ = {}; }

void TernPOIOptimization::createPriorityLevelScore() {
  run([](detail::OrderingRun& run) { run.createPriorityLevelScore(); });
}

void TernPOIOptimization::selectWaypointsOfDestinations() {
  if (tables_->startWayPoint == nullptr) return;
  detail::WaypointSelection(*tables_).selectWaypointsOfDestinations();
}

void TernPOIOptimization::rearrangeDestinations() {
  detail::WaypointSelection(*tables_).rearrangeDestinations();
}

std::shared_ptr<TernLocation> TernPOIOptimization::finalizeWaypointFor(
    const TernDestination& destination, bool shouldAdjustScore) {
  if (tables_->startWayPoint == nullptr) return nullptr;
  return detail::WaypointSelection(*tables_).finalizeWaypointFor(destination, shouldAdjustScore);
}

void TernPOIOptimization::updateDecidedLocationForNewScore(const TernDestination& destination) {
  if (tables_->startWayPoint == nullptr) return;
  detail::WaypointSelection(*tables_).updateDecidedLocationForNewScore(destination);
}

void TernPOIOptimization::adjustTheScore(const TernDestination& destination,
                                         const std::vector<std::int64_t>& selectedLocation) {
  detail::WaypointSelection(*tables_).adjustTheScore(destination, selectedLocation);
}

void TernPOIOptimization::getOptimalOrderOfDestinations() {
  run([](detail::OrderingRun& run) { run.getOptimalOrderOfDestinations(); });
}

void TernPOIOptimization::getShortestDistanceandTour(
    std::int64_t mapId, const std::shared_ptr<TernWaypoint>& startPoint) {
  run([&](detail::OrderingRun& run) { run.getShortestDistanceandTour(mapId, startPoint); });
}

void TernPOIOptimization::createPathandDoCorrectionInOrder(const Waypoints& chain) {
  detail::ChainLengths(*tables_).createPathandDoCorrectionInOrder(withoutNull(chain));
}

void TernPOIOptimization::createGraph(const Waypoints& chain, std::size_t forIndex) {
  detail::ChainLengths(*tables_).createGraph(withoutNull(chain), forIndex);
}

TernPOIOptimization::Waypoints TernPOIOptimization::getOptimalPathWithTSPAlgo(
    const Waypoints& chain, const TernTSP::Matrix& graph) {
  return detail::inOrder(chain, TernTSP::solve(graph));
}

TernPOIOptimization::Destinations TernPOIOptimization::getDestinationOrderFor(
    const Waypoints& order) const {
  return detail::OrderingRun(nullptr, nullptr, *tables_).getDestinationOrderFor(withoutNull(order));
}

TernPOIOptimization::Legs TernPOIOptimization::generatePathPerFloorFor(const Waypoints& order) {
  const auto venue = activeVenue_.lock();
  return detail::OrderingRun(venue.get(), nullptr, *tables_)
      .generatePathPerFloorFor(withoutNull(order));
}

TernRoute TernPOIOptimization::wayfindWithinArray(const TernWaypoint& from, const Waypoints& to,
                                                  std::int64_t accessibility) const {
  const auto venue = activeVenue_.lock();
  return venue != nullptr ? detail::routeWithinArray(*venue, from, to, accessibility) : TernRoute();
}

}  // namespace tern
