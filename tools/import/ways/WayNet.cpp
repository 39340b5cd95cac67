#include "tools/import/ways/WayNet.hpp"

#include <algorithm>
#include <limits>
#include <queue>
#include <tuple>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

constexpr double endless = std::numeric_limits<double>::infinity();
constexpr std::uint32_t noWay = std::numeric_limits<std::uint32_t>::max();

// The ways that are known so far, and what a search through them found. A search forgets only what
// it touched.
class Net {
 public:
  explicit Net(std::size_t nodes) : exits_(nodes), metres_(nodes, endless), by_(nodes, noWay) {}

  void add(const StraightWay& way) {
    const auto index = static_cast<std::uint32_t>(ways_.size());
    ways_.push_back(way);
    exits_[way.from].push_back({way.to, index, way.metres});
    exits_[way.to].push_back({way.from, index, way.metres});
  }

  // Finds the walks from the node that are no longer than so many metres.
  void search(std::uint32_t from, double most = endless) {
    forget();
    touched_.push_back(from);
    metres_[from] = 0;
    std::priority_queue<Open> open;
    open.push({0, from});
    while (!open.empty()) {
      const Open next = open.top();
      open.pop();
      if (next.metres > metres_[next.node]) continue;
      for (const Exit& exit : exits_[next.node]) {
        const double metres = next.metres + exit.metres;
        if (metres > most || metres >= metres_[exit.to]) continue;
        if (metres_[exit.to] == endless) touched_.push_back(exit.to);
        metres_[exit.to] = metres;
        by_[exit.to] = exit.way;
        open.push({metres, exit.to});
      }
    }
  }

  // How far the node is by the last search; endless where it did not come.
  double metres(std::uint32_t node) const { return metres_[node]; }
  // By which way the last search came to the node; `noWay` where it began or did not come.
  std::uint32_t by(std::uint32_t node) const { return by_[node]; }
  std::uint32_t otherEnd(std::uint32_t way, std::uint32_t node) const {
    return ways_[way].from == node ? ways_[way].to : ways_[way].from;
  }

 private:
  struct Exit {
    std::uint32_t to;
    std::uint32_t way;
    double metres;
  };

  struct Open {
    double metres;
    std::uint32_t node;
    bool operator<(const Open& other) const {
      return std::tie(metres, node) > std::tie(other.metres, other.node);
    }
  };

  void forget() {
    for (const std::uint32_t node : touched_) {
      metres_[node] = endless;
      by_[node] = noWay;
    }
    touched_.clear();
  }

  std::vector<StraightWay> ways_;
  std::vector<std::vector<Exit>> exits_;
  std::vector<double> metres_;
  std::vector<std::uint32_t> by_;
  std::vector<std::uint32_t> touched_;
};

// Which of the ways are joined by the others already. What a search finds about one way it notes
// for all ways from the same node. Ways only come to a net, so what was noted once holds on.
class Thinning {
 public:
  Thinning(std::size_t nodes, std::span<const StraightWay> ways)
      : ways_(ways), net_(nodes), waysFrom_(nodes), known_(ways.size(), endless) {
    for (std::uint32_t i = 0; i < ways.size(); ++i) waysFrom_[ways[i].from].push_back(i);
  }

  void keep(const StraightWay& way) { net_.add(way); }

  // Whether a walk of no more than so many metres leads from end to end of the way.
  bool isJoined(std::uint32_t way, double most) {
    if (known_[way] > most) look(way, most * ahead);
    return known_[way] <= most;
  }

 private:
  // Looking farther than asked answers what is asked about the same node later on, too: so there
  // are few searches for each node and each length twice the one before.
  static constexpr double ahead = 2;

  void look(std::uint32_t way, double most) {
    const std::uint32_t from = ways_[way].from;
    net_.search(from, most);
    const std::vector<std::uint32_t>& others = waysFrom_[from];
    for (auto other = std::ranges::lower_bound(others, way); other != others.end(); ++other) {
      if (ways_[*other].metres > most) break;
      known_[*other] = std::min(known_[*other], net_.metres(ways_[*other].to));
    }
  }

  std::span<const StraightWay> ways_;
  Net net_;
  // Of each node its ways, from the shortest to the longest.
  std::vector<std::vector<std::uint32_t>> waysFrom_;
  // Of each way how far its ends are from each other at most.
  std::vector<double> known_;
};

}  // namespace

std::vector<StraightWay> thinned(const Sight& sight, double stretch, std::size_t stops,
                                 std::size_t most) {
  Thinning thinning(sight.nodes.size(), sight.ways);
  std::vector<StraightWay> kept;
  std::size_t betweenStops = 0;
  for (std::uint32_t i = 0; i < sight.ways.size(); ++i) {
    const StraightWay& way = sight.ways[i];
    if (thinning.isJoined(i, way.metres * stretch)) continue;
    thinning.keep(way);
    kept.push_back(way);
    if (way.from < stops && way.to < stops && ++betweenStops > most) break;
  }
  return kept;
}

std::vector<StraightWay> usedOf(std::size_t nodes, std::span<const StraightWay> ways,
                                std::size_t stops) {
  Net net(nodes);
  std::vector<bool> isUsed;
  // From which stop the walk back through the node was followed last.
  std::vector<std::uint32_t> followed(nodes, noWay);
  // Straight from stop to stop nothing is shorter, so other ways begin where one leads to a corner.
  std::vector<bool> leadsToCorner(stops);
  for (const StraightWay& way : ways) {
    net.add(way);
    isUsed.push_back(way.from < stops && way.to < stops);
    if (isUsed.back()) continue;
    if (way.from < stops) leadsToCorner[way.from] = true;
    if (way.to < stops) leadsToCorner[way.to] = true;
  }
  for (std::uint32_t from = 0; from < stops; ++from) {
    if (!leadsToCorner[from]) continue;
    net.search(from);
    for (std::uint32_t to = 0; to < stops; ++to) {
      std::uint32_t node = to;
      while (net.by(node) != noWay && followed[node] != from) {
        followed[node] = from;
        isUsed[net.by(node)] = true;
        node = net.otherEnd(net.by(node), node);
      }
    }
  }
  std::vector<StraightWay> used;
  for (std::size_t i = 0; i < ways.size(); ++i) {
    if (isUsed[i]) used.push_back(ways[i]);
  }
  return used;
}

}  // namespace tern::imports
