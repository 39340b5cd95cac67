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
  explicit Net(std::span<const Point> nodes)
      : nodes_(nodes),
        exits_(nodes.size()),
        metres_(nodes.size(), endless),
        by_(nodes.size(), noWay) {}

  void add(const StraightWay& way) {
    const auto index = static_cast<std::uint32_t>(ways_.size());
    ways_.push_back(way);
    exits_[way.from].push_back(index);
    exits_[way.to].push_back(index);
  }

  // Whether a walk of no more than so many metres leads from the one to the other.
  bool isJoined(std::uint32_t from, std::uint32_t to, double most) {
    const Point goal = nodes_[to];
    search(
        from, [&](std::uint32_t node) { return apart(nodes_[node], goal); }, most,
        [&](std::uint32_t node) { return node == to; });
    return metres_[to] <= most;
  }

  void searchAll(std::uint32_t from) {
    search(
        from, [](std::uint32_t) { return 0.0; }, endless, [](std::uint32_t) { return false; });
  }

  // By which way the last search came to the node; `noWay` where it began or did not come.
  std::uint32_t by(std::uint32_t node) const { return by_[node]; }
  std::uint32_t otherEnd(std::uint32_t way, std::uint32_t node) const {
    return ways_[way].from == node ? ways_[way].to : ways_[way].from;
  }

 private:
  struct Open {
    double most;
    std::uint32_t node;
    double metres;
    bool operator<(const Open& other) const {
      return std::tie(most, node) > std::tie(other.most, other.node);
    }
  };

  template <class Rest, class IsEnd>
  void search(std::uint32_t from, Rest rest, double most, IsEnd isEnd) {
    for (const std::uint32_t node : touched_) {
      metres_[node] = endless;
      by_[node] = noWay;
    }
    touched_.assign(1, from);
    metres_[from] = 0;
    std::priority_queue<Open> open;
    open.push({0, from, 0});
    while (!open.empty()) {
      const Open next = open.top();
      open.pop();
      if (next.metres > metres_[next.node]) continue;
      if (isEnd(next.node)) return;
      for (const std::uint32_t way : exits_[next.node]) {
        const std::uint32_t node = otherEnd(way, next.node);
        const double metres = next.metres + ways_[way].metres;
        if (metres >= metres_[node]) continue;
        const double whole = metres + rest(node);
        if (whole > most) continue;
        if (metres_[node] == endless) touched_.push_back(node);
        metres_[node] = metres;
        by_[node] = way;
        open.push({whole, node, metres});
      }
    }
  }

  std::span<const Point> nodes_;
  std::vector<StraightWay> ways_;
  std::vector<std::vector<std::uint32_t>> exits_;
  std::vector<double> metres_;
  std::vector<std::uint32_t> by_;
  std::vector<std::uint32_t> touched_;
};

}  // namespace

std::vector<StraightWay> thinned(const Sight& sight, double stretch) {
  std::vector<StraightWay> byLength = sight.ways;
  std::ranges::sort(byLength, {}, [](const StraightWay& way) {
    return std::tuple(way.metres, way.from, way.to);
  });
  Net net(sight.nodes);
  std::vector<StraightWay> kept;
  for (const StraightWay& way : byLength) {
    if (net.isJoined(way.from, way.to, way.metres * stretch)) continue;
    net.add(way);
    kept.push_back(way);
  }
  return kept;
}

std::vector<StraightWay> usedOf(std::span<const Point> nodes, std::span<const StraightWay> ways,
                                std::size_t stops) {
  Net net(nodes);
  for (const StraightWay& way : ways) net.add(way);
  std::vector<bool> isUsed(ways.size());
  // From which stop the walk back through the node was followed last.
  std::vector<std::uint32_t> followed(nodes.size(), noWay);
  for (std::uint32_t from = 0; from < stops; ++from) {
    net.searchAll(from);
    for (std::uint32_t to = from + 1; to < stops; ++to) {
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
