#include "TernCoreKit/optimisation/detail/WaypointSelection.hpp"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::inline v5::detail {

namespace {

bool holds(std::span<const std::int64_t> ids, std::int64_t id) {
  return std::ranges::find(ids, id) != ids.end();
}

double roundedCoordinate(const TernWaypoint& waypoint, std::size_t axis) {
  return static_cast<float>(waypoint.coordinate(axis).number());
}

TernCoordinate roundedPoint(const TernWaypoint& waypoint) {
  return {roundedCoordinate(waypoint, 0), roundedCoordinate(waypoint, 1)};
}

float sumOfDistances(const TernWaypoint& from, const Waypoints& to, float sum) {
  for (const auto& each : to) {
    sum += TernUtils::distanceBetweenPoint1(roundedPoint(from), roundedPoint(*each));
  }
  return sum;
}

}  // namespace

void WaypointSelection::selectWaypointsOfDestinations() {
  level(tables_.startWayPoint->mapId.integer()).decidedWaypoints = {tables_.startWayPoint};
  rearrangeDestinations();
  for (const auto& destination : tables_.destinations()) finalizeWaypointFor(*destination, true);
  bool haveScoresChanged = false;
  for (const auto& destination : tables_.destinations()) {
    if (haveScoresChanged) updateDecidedLocationForNewScore(*destination);
    if (settleOpen(*destination)) haveScoresChanged = true;
  }
}

void WaypointSelection::rearrangeDestinations() {
  using Rank = std::tuple<std::int64_t, std::size_t, std::size_t, std::int64_t>;
  std::vector<std::pair<Rank, std::shared_ptr<TernDestination>>> ranked;
  for (const auto& destination : tables_.destinations()) {
    std::int64_t score = 0;
    for (const auto& location : destination->locations) {
      const std::int64_t mapId = location->mapId.integer();
      if (tables_.isReachable(mapId)) score += tables_.getScore(mapId);
    }
    ranked.push_back({{score, destination->locations.size(),
                       tables_.waypointsOf(*destination).size(), destination->id.integer()},
                      destination});
  }
  // Exchanges as it selects, which settles where destinations of one rank come to stand.
  for (std::size_t i = 0; i < ranked.size(); ++i) {
    for (std::size_t j = ranked.size() - 1; j > i; --j) {
      if (ranked[j].first > ranked[i].first) std::swap(ranked[i], ranked[j]);
    }
  }
  Destinations arranged;
  for (auto& [rank, destination] : ranked) arranged.push_back(std::move(destination));
  tables_.arrange(std::move(arranged));
}

std::shared_ptr<TernLocation> WaypointSelection::finalizeWaypointFor(
    const TernDestination& destination, bool shouldAdjustScore) {
  const TernWaypoint& start = *tables_.startWayPoint;
  if (tables_.waypointOf(destination, start.id.integer()) != nullptr) {
    const std::int64_t mapId = start.mapId.integer();
    if (shouldAdjustScore) adjustTheScore(destination, {&mapId, 1});
    return nullptr;
  }
  Choice choice = chooseLocation(destination);
  const auto best = choice.best;
  auto& record = tables_.intermediateStateOfDestination[destination.id.integer()];
  record.isReachable = best != nullptr;
  if (best == nullptr) return nullptr;
  if (choice.tied.empty() && best->waypointIds.items().size() == 1) {
    settle(destination, record, *best, shouldAdjustScore);
  } else {
    leaveOpen(destination, record, std::move(choice), shouldAdjustScore);
  }
  return best;
}

WaypointSelection::Choice WaypointSelection::chooseLocation(
    const TernDestination& destination) const {
  Choice choice;
  std::int64_t bestScore = 0;
  for (const auto& location : destination.locations) {
    const std::int64_t mapId = location->mapId.integer();
    if (!tables_.isReachable(mapId)) continue;
    const std::int64_t score = tables_.getScore(mapId);
    if (choice.best == nullptr || score > bestScore) {
      choice = {location, {}};
      bestScore = score;
    } else if (score == bestScore) {
      choice.tied.push_back(mapId);
    }
  }
  return choice;
}

void WaypointSelection::settle(const TernDestination& destination, TernTourDestination& record,
                               const TernLocation& best, bool shouldAdjustScore) {
  const std::int64_t mapId = best.mapId.integer();
  record.decidedMapid = mapId;
  record.TBDMapids.clear();
  auto waypoint = tables_.waypointOf(destination, best.waypointIds.items()[0].integer());
  if (waypoint != nullptr) level(mapId).decide(std::move(waypoint));
  if (shouldAdjustScore) adjustTheScore(destination, {&mapId, 1});
}

void WaypointSelection::leaveOpen(const TernDestination& destination, TernTourDestination& record,
                                  Choice choice, bool shouldAdjustScore) {
  const std::int64_t bestMapId = choice.best->mapId.integer();
  if (!holds(choice.tied, bestMapId)) choice.tied.push_back(bestMapId);
  record.TBDMapids = std::move(choice.tied);
  record.decidedMapid.reset();
  if (shouldAdjustScore) adjustTheScore(destination, record.TBDMapids);
  for (const auto& waypoint : tables_.waypointsOf(destination)) {
    if (waypoint == nullptr || !holds(record.TBDMapids, waypoint->mapId.integer())) continue;
    level(waypoint->mapId.integer()).TBDwaypoints.push_back(waypoint);
  }
}

void WaypointSelection::adjustTheScore(const TernDestination& destination,
                                       std::span<const std::int64_t> selected) {
  for (const auto& location : destination.locations) {
    const std::int64_t mapId = location->mapId.integer();
    if (!holds(selected, mapId)) --level(mapId).score;
  }
}

void WaypointSelection::updateDecidedLocationForNewScore(const TernDestination& destination) {
  auto& records = tables_.intermediateStateOfDestination;
  const auto found = records.find(destination.id.integer());
  if (found == records.end()) return;
  const TernTourDestination old = found->second;
  const auto isOwn = [&](const auto& each) { return tables_.isOwned(*each, destination); };
  if (old.decidedMapid) {
    auto& decided = level(*old.decidedMapid).decidedWaypoints;
    const auto own = decided ? std::ranges::find_if(*decided, isOwn) : Waypoints::iterator();
    if (decided && own != decided->end()) decided->erase(own);
  }
  for (const std::int64_t mapId : old.TBDMapids) std::erase_if(level(mapId).TBDwaypoints, isOwn);
  finalizeWaypointFor(destination, false);
  addToScores(old, -1);
  addToScores(found->second, 1);
}

void WaypointSelection::addToScores(const TernTourDestination& record, std::int64_t difference) {
  if (record.decidedMapid) level(*record.decidedMapid).score += difference;
  for (const std::int64_t mapId : record.TBDMapids) level(mapId).score += difference;
}

bool WaypointSelection::settleOpen(const TernDestination& destination) {
  auto& records = tables_.intermediateStateOfDestination;
  const auto found = records.find(destination.id.integer());
  if (found == records.end()) return false;
  TernTourDestination& record = found->second;
  Door best{nullptr, std::numeric_limits<float>::max()};
  for (const std::int64_t mapId : record.TBDMapids) examineDoorsOn(mapId, destination, best);
  if (best.waypoint == nullptr) return false;
  const std::int64_t bestMapId = best.waypoint->mapId.integer();
  record.decidedMapid = bestMapId;
  level(bestMapId).decide(best.waypoint);
  bool haveScoresChanged = false;
  for (const std::int64_t mapId : record.TBDMapids) {
    if (mapId == bestMapId) continue;
    --level(mapId).score;
    haveScoresChanged = true;
  }
  record.TBDMapids.clear();
  return haveScoresChanged;
}

// The destination's own candidates leave the level as soon as any door has been found.
void WaypointSelection::examineDoorsOn(std::int64_t mapId, const TernDestination& destination,
                                       Door& best) {
  const auto location = std::ranges::find_if(
      destination.locations, [&](const auto& each) { return each->mapId.integer() == mapId; });
  if (location == destination.locations.end()) return;
  const Waypoints decided = level(mapId).decidedWaypoints.value_or(Waypoints());
  Waypoints others = level(mapId).TBDwaypoints;
  std::erase_if(others, [&](const auto& each) { return tables_.isOwned(*each, destination); });
  const std::size_t count = decided.size() + others.size();
  for (const Value& id : (*location)->waypointIds.items()) {
    const auto waypoint = tables_.waypointOf(destination, id.integer());
    if (waypoint == nullptr) continue;
    const float sum = sumOfDistances(*waypoint, others, sumOfDistances(*waypoint, decided, 0));
    // Nothing to compare with, everything at the same spot, or no number.
    if (count < 1 || !(sum > 0)) continue;
    const float mean = sum / static_cast<float>(count);
    if (mean < best.mean) best = {waypoint, mean};
    if (best.waypoint != nullptr) level(mapId).TBDwaypoints = others;
  }
}

}  // namespace tern::detail
