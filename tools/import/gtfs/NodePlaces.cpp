#include "tools/import/gtfs/NodePlaces.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <tuple>

namespace tern::imports {

namespace {

constexpr double stillMetres = 1e-4;
constexpr std::size_t mostRounds = 5'000;
// Rounds times links, so that no feed takes longer than a few seconds.
constexpr std::size_t mostSteps = 400'000'000;
// Closer is one point.
constexpr double apartMetres = 0.5;
// How far what hangs at the end of a way is drawn from it.
constexpr double leastHangMetres = 1;
constexpr double mostHangMetres = 40;
// No two of its multiples are one direction.
const double goldenAngle = std::numbers::pi * (3 - std::sqrt(5.0));

double distance(Point a, Point b) { return std::hypot(a.x - b.x, a.y - b.y); }

// The points taken on each floor, in cells that hold one each.
class TakenPoints {
 public:
  bool isFree(std::size_t floor, Point at) const {
    const auto [x, y] = cellOf(at);
    for (long dx = -2; dx <= 2; ++dx) {
      for (long dy = -2; dy <= 2; ++dy) {
        const auto found = cells_.find({floor, x + dx, y + dy});
        if (found != cells_.end() && distance(found->second, at) < apartMetres) return false;
      }
    }
    return true;
  }

  void take(std::size_t floor, Point at) {
    const auto [x, y] = cellOf(at);
    cells_.try_emplace({floor, x, y}, at);
  }

 private:
  static std::pair<long, long> cellOf(Point at) {
    constexpr double cellMetres = apartMetres * 0.7;
    return {std::lround(at.x / cellMetres), std::lround(at.y / cellMetres)};
  }

  std::map<std::tuple<std::size_t, long, long>, Point> cells_;
};

class NodePlacer {
 public:
  NodePlacer(std::span<const PlacedNode> nodes, std::span<const PlacedLink> links)
      : nodes_(nodes), links_(links), linksOf_(nodes.size()), parents_(nodes.size(), noLink) {
    for (std::size_t i = 0; i < links.size(); ++i) {
      linksOf_[links[i].from].push_back(i);
      linksOf_[links[i].to].push_back(i);
    }
  }

  std::vector<Point> place() {
    orderOutward();
    means_.resize(nodes_.size());
    for (const std::size_t node : order_) {
      means_[node] = isRoot(node) ? rootPlace(node) : means_[parentOf(node)];
    }
    relax();
    settle();
    return std::move(settled_);
  }

 private:
  static constexpr std::size_t noLink = static_cast<std::size_t>(-1);

  bool isRoot(std::size_t node) const { return parents_[node] == noLink; }
  Point rootPlace(std::size_t node) const {
    return nodes_[node].stated.value_or(nodes_[node].fallback);
  }
  std::size_t otherEnd(std::size_t link, std::size_t node) const {
    return links_[link].from == node ? links_[link].to : links_[link].from;
  }
  std::size_t parentOf(std::size_t node) const { return otherEnd(parents_[node], node); }

  // From the stated nodes outward; each part of the station without one from its first node.
  void orderOutward() {
    std::vector<bool> isSeen(nodes_.size());
    const auto add = [&](std::size_t node) {
      isSeen[node] = true;
      order_.push_back(node);
    };
    std::size_t next = 0;
    const auto walk = [&] {
      for (; next < order_.size(); ++next) {
        for (const std::size_t link : linksOf_[order_[next]]) {
          const std::size_t other = otherEnd(link, order_[next]);
          if (isSeen[other]) continue;
          parents_[other] = link;
          add(other);
        }
      }
    };
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      if (nodes_[i].stated) add(i);
    }
    walk();
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      if (isSeen[i]) continue;
      add(i);
      walk();
    }
  }

  void relax() {
    const std::size_t rounds = std::min(mostRounds, mostSteps / (links_.size() + 1));
    for (std::size_t round = 0; round < rounds; ++round) {
      double moved = 0;
      for (const std::size_t node : order_) {
        if (isRoot(node)) continue;
        const Point mean = meanOf(node);
        moved = std::max(moved, distance(mean, means_[node]));
        means_[node] = mean;
      }
      if (moved < stillMetres) return;
    }
  }

  Point meanOf(std::size_t node) const {
    Point sum;
    double weights = 0;
    for (const std::size_t link : linksOf_[node]) {
      const Point other = means_[otherEnd(link, node)];
      const double weight = 1 / links_[link].metres;
      sum = {sum.x + weight * other.x, sum.y + weight * other.y};
      weights += weight;
    }
    return {sum.x / weights, sum.y / weights};
  }

  void settle() {
    settled_ = means_;
    turns_.assign(nodes_.size(), 0);
    outward_.assign(nodes_.size(), 0);
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      if (nodes_[i].stated) taken_.take(nodes_[i].floor, *nodes_[i].stated);
    }
    for (const std::size_t node : order_) {
      if (nodes_[node].stated) continue;
      settled_[node] = freePlace(node);
      taken_.take(nodes_[node].floor, settled_[node]);
    }
  }

  Point freePlace(std::size_t node) {
    const std::size_t floor = nodes_[node].floor;
    const std::size_t about = isRoot(node) ? node : parentOf(node);
    const bool hangs = about != node && distance(means_[node], means_[about]) < 100 * stillMetres;
    const Point wanted = hangs ? settled_[about] : means_[node];
    if (taken_.isFree(floor, wanted)) return wanted;
    const double metres = hangs ? links_[parents_[node]].metres : 0;
    return freeAround(about, floor, wanted, std::clamp(metres, leastHangMetres, mostHangMetres));
  }

  // Turns on about the point, and farther out after each time round, from where it left off for the
  // node before.
  Point freeAround(std::size_t about, std::size_t floor, Point centre, double metres) {
    constexpr double turnsOfARound = 8;
    if (turns_[about] == 0) outward_[about] = outwardFrom(about);
    const double outward = outward_[about];
    Point at = centre;
    do {
      const double turn = turns_[about]++;
      const double angle = outward + turn * goldenAngle;
      const double far = metres * std::sqrt(1 + std::floor(turn / turnsOfARound));
      at = {centre.x + far * std::cos(angle), centre.y + far * std::sin(angle)};
    } while (!taken_.isFree(floor, at));
    return at;
  }

  // The direction in which a node leads away from its neighbours.
  double outwardFrom(std::size_t node) const {
    Point sum;
    for (const std::size_t link : linksOf_[node]) {
      const Point other = means_[otherEnd(link, node)];
      sum = {sum.x + means_[node].x - other.x, sum.y + means_[node].y - other.y};
    }
    return std::atan2(sum.y, sum.x);
  }

  std::span<const PlacedNode> nodes_;
  std::span<const PlacedLink> links_;
  std::vector<std::vector<std::size_t>> linksOf_;
  // Of each node the link by which it was come to; a root has none.
  std::vector<std::size_t> parents_;
  std::vector<std::size_t> order_;
  std::vector<Point> means_;
  std::vector<Point> settled_;
  // About each node: the turns taken, and the direction of the first.
  std::vector<double> turns_;
  std::vector<double> outward_;
  TakenPoints taken_;
};

}  // namespace

std::vector<Point> placesOf(std::span<const PlacedNode> nodes, std::span<const PlacedLink> links) {
  return NodePlacer(nodes, links).place();
}

}  // namespace tern::imports
