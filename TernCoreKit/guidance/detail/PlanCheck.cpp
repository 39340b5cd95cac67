#include "TernCoreKit/guidance/detail/PlanCheck.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>

#include "TernCoreKit/guidance/detail/LineTurns.hpp"
#include "TernCoreKit/guidance/detail/Plane.hpp"

namespace tern::inline v5::detail {

namespace {

// What somebody has behind them when they say where straight on is, and how far they look ahead.
// Metres.
constexpr double remembered = 5;
constexpr double inView = 6;
// What leads nowhere within this is a door. Metres.
constexpr double stub = 3;
// By how much another way may be less straight and still mislead. Degrees.
constexpr double hardlyLess = 5;
// What bends less can be told nobody. Degrees.
constexpr double leastTold = 10;

TernCoordinate between(TernCoordinate a, TernCoordinate b, double share) {
  return {a.x + share * (b.x - a.x), a.y + share * (b.y - a.y)};
}

struct Spot {
  TernASNode node;
  std::int64_t id = 0;
  std::int64_t mapId = 0;
  TernCoordinate at;
  // To spots of the same map, on foot. None before somebody looks.
  std::optional<std::vector<Spot*>> ways;
};

// The spots around a route, each looked up once.
class Surroundings {
 public:
  Surroundings(const TernASGrid& grid, MapPlaces& places) : grid_(grid), places_(places) {}

  // Null where the grid has no such node.
  Spot* find(std::int64_t id) {
    const auto [known, isNew] = spots_.try_emplace(id);
    std::optional<Spot>& spot = known->second;
    if (isNew) {
      if (const auto node = grid_.getNodeById(id)) spot = placed(*node, id);
    }
    return spot ? &*spot : nullptr;
  }

  const std::vector<Spot*>& waysFrom(Spot& spot) {
    if (!spot.ways) spot.ways = walkedFrom(spot);
    return *spot.ways;
  }

 private:
  Spot placed(const TernASNode& node, std::int64_t id) {
    const std::int64_t mapId = node.mapId();
    return {.node = node,
            .id = id,
            .mapId = mapId,
            .at = onMap(node, places_.of(mapId), places_.areOfJoinedVenues()),
            .ways = {}};
  }

  std::vector<Spot*> walkedFrom(const Spot& spot) {
    std::vector<Spot*> ways;
    for (const TernNeighbor& neighbor : spot.node.neighbors()) {
      if (neighbor.edgeTypeId.integer() != walkingPathType) continue;
      Spot* const other = find(neighbor.neighborId.integer());
      if (other != nullptr && other != &spot && other->mapId == spot.mapId) ways.push_back(other);
    }
    return ways;
  }

  const TernASGrid& grid_;
  MapPlaces& places_;
  std::unordered_map<std::int64_t, std::optional<Spot>> spots_;
};

struct Looking {
  Spot& here;
  const Spot& from;
  TernCoordinate heading;
};

// What somebody sees along a way, by the shortest ways to it.
class Sight {
 public:
  Sight(const Looking& person, Surroundings& spots) : person_(person), spots_(spots) {}

  // Whether something of it within a glance lies straighter ahead than that. Never where it is but
  // a door.
  bool bendsLessThan(double degrees, Spot& first) {
    open_ = {{apart(person_.here.at, first.at), &first, &person_.here}};
    while (!open_.empty()) {
      const auto nearest = std::ranges::min_element(open_, {}, &Reached::metres);
      const Reached reached = *nearest;
      open_.erase(nearest);
      if (std::ranges::find(known_, reached.spot) != known_.end()) continue;
      known_.push_back(reached.spot);
      const auto end = endAt(reached);
      if (!end) continue;
      const double bend = degreesBetween(person_.heading, *end - person_.here.at);
      if (std::abs(bend) < degrees) return true;
    }
    return false;
  }

 private:
  struct Reached {
    double metres = 0;
    Spot* spot = nullptr;
    const Spot* before = nullptr;
  };

  // Where the glance, or the way, ends; none where it goes on, or ends at a door.
  std::optional<TernCoordinate> endAt(const Reached& reached) {
    const TernCoordinate at = reached.spot->at;
    if (reached.metres >= inView) {
      const double link = apart(reached.before->at, at);
      return link > 0 ? between(at, reached.before->at, (reached.metres - inView) / link) : at;
    }
    bool isDeadEnd = true;
    for (Spot* const next : spots_.waysFrom(*reached.spot)) {
      if (next == &person_.here || next == &person_.from || next == reached.before) continue;
      isDeadEnd = false;
      open_.push_back({reached.metres + apart(at, next->at), next, reached.spot});
    }
    return isDeadEnd && reached.metres >= stub ? std::optional(at) : std::nullopt;
  }

  const Looking& person_;
  Surroundings& spots_;
  std::vector<const Spot*> known_;
  std::vector<Reached> open_;
};

// Reads what lies between two decisions.
class Reading {
 public:
  Reading(const WalkedRoute& route, Surroundings& spots) : nodes_(route.nodes), spots_(spots) {}

  // How far the route bends at a node where somebody would go another way; none where they would
  // not, or nothing can be told. `since` and `until` are where the decisions around it are.
  std::optional<double> misleadsAt(std::size_t i, std::size_t since, std::size_t until) {
    const TernCoordinate heading = headingAt(i, since);
    const double own = degreesBetween(heading, ahead(i, until) - nodes_[i].at);
    if (std::abs(own) < leastTold) return std::nullopt;
    Spot* const here = spots_.find(nodes_[i].id);
    Spot* const from = spots_.find(nodes_[i - 1].id);
    if (here == nullptr || from == nullptr) return std::nullopt;
    const std::vector<Spot*>& ways = spots_.waysFrom(*here);
    if (ways.size() < 3) return std::nullopt;
    const Looking person{*here, *from, heading};
    const auto misleads = [&](Spot* other) {
      return other != from && other->id != nodes_[i + 1].id &&
             Sight(person, spots_).bendsLessThan(std::abs(own) + hardlyLess, *other);
    };
    return std::ranges::any_of(ways, misleads) ? std::optional(own) : std::nullopt;
  }

 private:
  TernCoordinate ahead(std::size_t i, std::size_t until) const {
    double left = inView;
    for (std::size_t k = i; k < until; ++k) {
      const double length = apart(nodes_[k].at, nodes_[k + 1].at);
      if (length >= left) return between(nodes_[k].at, nodes_[k + 1].at, left / length);
      left -= length;
    }
    return nodes_[until].at;
  }

  TernCoordinate headingAt(std::size_t i, std::size_t since) const {
    double left = remembered;
    for (std::size_t k = i; k > since; --k) {
      const double length = apart(nodes_[k - 1].at, nodes_[k].at);
      if (length >= left && length > 0) {
        return nodes_[i].at - between(nodes_[k].at, nodes_[k - 1].at, left / length);
      }
      left -= length;
    }
    return nodes_[i].at - nodes_[since].at;
  }

  std::span<const WalkedNode> nodes_;
  Surroundings& spots_;
};

bool isWalked(const WalkedNode& to, const WalkedNode& from) {
  return to.mapId == from.mapId && to.pathTypeId == walkingPathType;
}

// The decision that a turn so close to it is told with; null where it is a step of its own, none
// where what is told there is enough.
std::optional<Decision*> toldWith(Decision& last, double sinceLast, Decision& next,
                                  double untilNext) {
  using Kind = TernStep::Kind;
  if (untilNext < tellableApart) {
    if (next.kind == Kind::turn || next.degrees) return std::nullopt;
    return &next;
  }
  if (sinceLast < tellableApart) {
    if (last.kind != Kind::depart || last.degrees) return std::nullopt;
    return &last;
  }
  return nullptr;
}

// Metres along the drawn line to each node.
std::vector<double> metresTo(std::span<const WalkedNode> nodes) {
  std::vector<double> metres(nodes.size());
  for (std::size_t i = 1; i < nodes.size(); ++i) {
    metres[i] = metres[i - 1] + apart(nodes[i - 1].at, nodes[i].at);
  }
  return metres;
}

}  // namespace

void tellWhereWaysMislead(std::vector<Decision>& plan, const WalkedRoute& route,
                          const TernASGrid& grid, MapPlaces& places) {
  const std::span<const WalkedNode> nodes = route.nodes;
  const std::vector<double> metres = metresTo(nodes);
  Surroundings spots(grid, places);
  Reading reading(route, spots);
  std::vector<Decision> told;
  for (std::size_t d = 0; d + 1 < plan.size(); ++d) {
    told.push_back(plan[d]);
    Decision& next = plan[d + 1];
    std::size_t since = plan[d].resume;
    for (std::size_t i = since + 1; i < next.node; ++i) {
      if (!isWalked(nodes[i], nodes[i - 1])) since = i;
      if (since == i || !isWalked(nodes[i + 1], nodes[i])) continue;
      Decision& last = told.back();
      const auto with =
          toldWith(last, metres[i] - metres[last.resume], next, metres[next.node] - metres[i]);
      const auto bend = with ? reading.misleadsAt(i, since, next.node) : std::nullopt;
      if (!bend) continue;
      if (*with != nullptr) {
        (*with)->degrees = bend;
      } else {
        told.push_back({TernStep::Kind::turn, i, i, bend, nullptr});
        since = i;
      }
    }
  }
  told.push_back(plan.back());
  plan = std::move(told);
}

}  // namespace tern::detail
