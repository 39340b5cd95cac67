#include "bench/Yardstick.hpp"

#include <bit>

namespace tern::bench {

namespace {

constexpr std::size_t largeGraph = 150'000;

// Costs here are never negative, and such floats are ordered as their bits are.
std::int32_t keyOf(float score) { return std::bit_cast<std::int32_t>(score); }

// Breadth first from the first node.
std::vector<std::uint32_t> numberAlong(const Adjacency& adjacency,
                                       std::vector<std::uint32_t>& order) {
  constexpr std::uint32_t none = ~0U;
  std::vector<std::uint32_t> numbers(adjacency.nodeCount(), none);
  const auto take = [&](std::uint32_t node) {
    if (numbers[node] != none) return;
    numbers[node] = static_cast<std::uint32_t>(order.size());
    order.push_back(node);
  };
  std::size_t expanded = 0;
  for (std::uint32_t seed = 0; seed < adjacency.nodeCount(); ++seed) {
    take(seed);
    for (; expanded < order.size(); ++expanded) {
      const std::uint32_t node = order[expanded];
      for (auto i = adjacency.first[node]; i < adjacency.first[node + 1]; ++i)
        take(adjacency.target[i]);
    }
  }
  return numbers;
}

}  // namespace

Yardstick::Yardstick(const Adjacency& adjacency)
    : states_(adjacency.nodeCount()), heap_(adjacency.nodeCount() + 2) {
  std::vector<std::uint32_t> order;
  numbers_ = numberAlong(adjacency, order);
  for (std::size_t i = 0; i < order.size(); ++i) {
    states_[i].firstLink = static_cast<std::uint32_t>(links_.size());
    for (auto link = adjacency.first[order[i]]; link < adjacency.first[order[i] + 1]; ++link) {
      links_.push_back({numbers_[adjacency.target[link]], adjacency.cost[link],
                        adjacency.distance[link], adjacency.accessibility[link]});
    }
    states_[i].endLink = static_cast<std::uint32_t>(links_.size());
  }
}

inline void Yardstick::put(std::size_t at, Entry entry) {
  heap_[at] = entry;
  states_[entry.node].heapPlace = static_cast<std::uint32_t>(at);
}

inline void Yardstick::siftUp(std::size_t at, Entry entry) {
  for (; at > 1 && heap_[at / 2].key > entry.key; at /= 2) put(at, heap_[at / 2]);
  put(at, entry);
}

inline void Yardstick::removeFirst() {
  const Entry last = heap_[count_--];
  if (count_ == 0) return;
  std::size_t at = 1;
  std::size_t child = 2;
  for (; child < count_; child = 2 * at) {
    child += static_cast<std::size_t>(heap_[child].key > heap_[child + 1].key);
    if (last.key <= heap_[child].key) break;
    put(at, heap_[child]);
    at = child;
  }
  if (child == count_ && last.key > heap_[child].key) {
    put(at, heap_[child]);
    at = child;
  }
  put(at, last);
}

inline void Yardstick::expand(std::uint32_t at, std::int32_t accessLevel) {
  const State& current = states_[at];
  for (auto i = current.firstLink; i < current.endLink; ++i) {
    const Link& link = links_[i];
    if (link.accessibility > accessLevel) continue;
    State& node = states_[link.target];
    if (node.stamp == stamp_ + 1) continue;
    const float tentative = current.score + link.cost;
    const bool visited = node.stamp == stamp_;
    if (visited && !(tentative < node.score)) continue;
    node.stamp = stamp_;
    node.score = tentative;
    node.distance = current.distance + link.distance;
    node.parent = at;
    node.usedType = link.accessibility;
    if (visited) {
      heap_[node.heapPlace].key = keyOf(tentative);
    } else {
      siftUp(++count_, {keyOf(tentative), link.target});
    }
  }
}

float Yardstick::search(Query query, std::int32_t accessLevel) {
  const std::uint32_t start = numbers_[query.from];
  const std::uint32_t goal = numbers_[query.to];
  const bool isLarge = states_.size() >= largeGraph;
  stamp_ += 2;
  states_[start].score = 0;
  states_[start].distance = 0;
  count_ = 0;
  siftUp(++count_, {0, start});
  while (count_ > 0) {
    const std::uint32_t at = heap_[1].node;
    removeFirst();
    if (at == goal) return states_[at].score;
    states_[at].stamp = stamp_ + 1;
    if (isLarge && count_ > 0) {
      const State& next = states_[heap_[1].node];
      for (auto i = next.firstLink; i < next.endLink; ++i) {
        __builtin_prefetch(&states_[links_[i].target]);
      }
    }
    expand(at, accessLevel);
  }
  return -1;
}

}  // namespace tern::bench
