#include "TernCoreKit/guidance/detail/StepPlan.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "TernCoreKit/guidance/detail/LineTurns.hpp"
#include "TernCoreKit/guidance/detail/Plane.hpp"

namespace tern::inline v5::detail {

namespace {

// What somebody has behind or before them when they choose a way. Metres.
constexpr double glance = 2;
// By how much another way has to be the straighter one. Degrees.
constexpr double clearlyStraighter = 5;
constexpr double hardlyATurn = 10;

// The node a glance away from one, along the route and on its map.
TernCoordinate glanced(std::span<const WalkedNode> nodes, std::size_t from, int step) {
  std::size_t i = from;
  while (apart(nodes[i].at, nodes[from].at) < glance) {
    const bool isLast = step < 0 ? i == 0 : i + 1 == nodes.size();
    if (isLast) break;
    const std::size_t next = step < 0 ? i - 1 : i + 1;
    if (nodes[next].mapId != nodes[from].mapId) break;
    i = next;
  }
  return nodes[i].at;
}

bool isWalkedThrough(std::span<const WalkedNode> nodes, std::size_t i) {
  return i > 0 && i + 1 < nodes.size() && nodes[i - 1].mapId == nodes[i].mapId &&
         nodes[i + 1].mapId == nodes[i].mapId && nodes[i].pathTypeId == walkingPathType &&
         nodes[i + 1].pathTypeId == walkingPathType;
}

bool isParting(std::span<const WalkedNode> nodes, std::size_t i, const TernASGrid& grid,
               MapPlaces& places) {
  const TernCoordinate here = nodes[i].at;
  const TernCoordinate before = here - glanced(nodes, i, -1);
  const double own = std::abs(degreesBetween(before, glanced(nodes, i, 1) - here));
  if (own < hardlyATurn) return false;
  const auto node = grid.getNodeById(nodes[i].id);
  if (!node) return false;
  const MapPlace& place = places.of(nodes[i].mapId);
  for (const TernNeighbor& neighbor : node->neighbors()) {
    const std::int64_t id = neighbor.neighborId.integer();
    if (neighbor.edgeTypeId.integer() != walkingPathType || id == nodes[i - 1].id ||
        id == nodes[i + 1].id) {
      continue;
    }
    const auto other = grid.getNodeById(id);
    if (!other || other->mapId() != nodes[i].mapId) continue;
    const TernCoordinate there = onMap(*other, place, places.areOfJoinedVenues());
    if (std::abs(degreesBetween(before, there - here)) + clearlyStraighter < own) return true;
  }
  return false;
}

// The beginning, the rides, the ways into another map and the end.
std::vector<Decision> events(const WalkedRoute& route) {
  const std::size_t last = route.nodes.size() - 1;
  std::vector<Decision> all{{TernStep::Kind::depart, 0, 0, {}, nullptr}};
  auto ride = route.rides.begin();
  for (std::size_t i = 0; i < last; ++i) {
    if (ride != route.rides.end() && ride->entry == i) {
      all.push_back({TernStep::Kind::mover, ride->entry, ride->exit, {}, &*ride});
      i = ride->exit - 1;
      ++ride;
    } else if (route.nodes[i + 1].mapId != route.nodes[i].mapId) {
      all.push_back({TernStep::Kind::crossing, i, i + 1, {}, nullptr});
    }
  }
  all.push_back({TernStep::Kind::arrive, last, last, {}, nullptr});
  return all;
}

double walkedMetres(std::span<const WalkedNode> nodes, std::size_t from, std::size_t to) {
  double metres = 0;
  for (std::size_t i = from; i < to; ++i) metres += apart(nodes[i].at, nodes[i + 1].at);
  return metres;
}

void add(Decision& to, double degrees) {
  to.degrees = std::remainder(to.degrees.value_or(0) + degrees, 360);
}

// The turns between two events. What lies right at one of them is part of it, but for a ride that
// has just ended.
std::vector<Decision> turnsBetween(Decision& before, Decision& after, const WalkedRoute& route,
                                   std::span<const std::size_t> partings) {
  const auto& nodes = route.nodes;
  const auto isSameMap = [&](std::size_t i) {
    return nodes[i].mapId == nodes[before.resume].mapId;
  };
  const std::size_t first =
      before.resume > 0 && isSameMap(before.resume - 1) ? before.resume - 1 : before.resume;
  const std::size_t last =
      after.node + 1 < nodes.size() && isSameMap(after.node + 1) ? after.node + 1 : after.node;
  std::vector<TernCoordinate> line;
  for (std::size_t i = first; i <= last; ++i) line.push_back(nodes[i].at);
  std::vector<std::size_t> decisions;
  for (const std::size_t i : partings) {
    if (i > first && i < last) decisions.push_back(i - first);
  }
  std::vector<Decision> turns;
  for (const LineTurn& turn : turnsOf(line, decisions)) {
    const std::size_t node = first + turn.point;
    const bool isAtEnd = walkedMetres(nodes, node, after.node) < tellableApart;
    const bool isAtBeginning = before.kind != TernStep::Kind::mover &&
                               walkedMetres(nodes, before.resume, node) < tellableApart;
    if (isAtEnd) {
      add(after, turn.degrees);
    } else if (isAtBeginning) {
      add(before, turn.degrees);
    } else {
      turns.push_back({TernStep::Kind::turn, node, node, turn.degrees, nullptr});
    }
  }
  return turns;
}

// A way into another building that leads straight to the next event is told by that one.
bool isToldByNext(const Decision& each, const Decision& next, const WalkedRoute& route) {
  return each.kind == TernStep::Kind::crossing &&
         walkedMetres(route.nodes, each.resume, next.node) < tellableApart;
}

}  // namespace

std::optional<TernDirection> directionOf(std::optional<double> degrees) {
  if (!degrees || std::abs(*degrees) < hardlyATurn) return std::nullopt;
  const double turn = std::abs(*degrees);
  const bool isRight = *degrees > 0;
  if (turn >= 160) return TernDirection::around;
  if (turn >= 120) return isRight ? TernDirection::sharpRight : TernDirection::sharpLeft;
  if (turn >= 60) return isRight ? TernDirection::right : TernDirection::left;
  return isRight ? TernDirection::slightRight : TernDirection::slightLeft;
}

std::vector<std::size_t> partings(const WalkedRoute& route, const TernASGrid& grid,
                                  MapPlaces& places) {
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < route.nodes.size(); ++i) {
    if (isWalkedThrough(route.nodes, i) && isParting(route.nodes, i, grid, places)) {
      found.push_back(i);
    }
  }
  return found;
}

std::vector<Decision> planOf(const WalkedRoute& route, std::span<const std::size_t> partings) {
  std::vector<Decision> all = events(route);
  std::vector<Decision> plan;
  for (std::size_t i = 0; i + 1 < all.size(); ++i) {
    std::vector<Decision> turns = turnsBetween(all[i], all[i + 1], route, partings);
    if (isToldByNext(all[i], all[i + 1], route)) {
      if (all[i].degrees) add(all[i + 1], *all[i].degrees);
    } else {
      plan.push_back(all[i]);
    }
    plan.insert(plan.end(), turns.begin(), turns.end());
  }
  plan.push_back(all.back());
  return plan;
}

}  // namespace tern::detail
