#include "tools/graph/Components.hpp"

#include <algorithm>
#include <limits>
#include <numeric>

namespace tern::graph {

namespace {

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

class StrongParts {
 public:
  explicit StrongParts(const Digraph& graph)
      : graph_(graph),
        order_(graph.count(), none),
        lowest_(graph.count(), none),
        parts_(graph.count(), none) {}

  PartNumbers find() {
    for (std::uint32_t node = 0; node < graph_.count(); ++node) {
      if (order_[node] == none) explore(node);
    }
    return std::move(parts_);
  }

 private:
  struct Visit {
    std::uint32_t node;
    std::uint32_t next;
  };

  void explore(std::uint32_t root) {
    enter(root);
    while (!visits_.empty()) {
      Visit& visit = visits_.back();
      const auto targets = graph_.of(visit.node);
      if (visit.next < targets.size()) {
        follow(visit.node, targets[visit.next++]);
      } else {
        leave(visit.node);
      }
    }
  }

  void enter(std::uint32_t node) {
    order_[node] = lowest_[node] = entered_++;
    open_.push_back(node);
    visits_.push_back({node, 0});
  }

  void follow(std::uint32_t node, std::uint32_t target) {
    if (order_[target] == none) {
      enter(target);
    } else if (parts_[target] == none) {
      lowest_[node] = std::min(lowest_[node], order_[target]);
    }
  }

  void leave(std::uint32_t node) {
    visits_.pop_back();
    if (!visits_.empty()) {
      std::uint32_t& before = lowest_[visits_.back().node];
      before = std::min(before, lowest_[node]);
    }
    if (lowest_[node] != order_[node]) return;
    std::uint32_t member = none;
    do {
      member = open_.back();
      open_.pop_back();
      parts_[member] = found_;
    } while (member != node);
    ++found_;
  }

  const Digraph& graph_;
  std::vector<std::uint32_t> order_;
  std::vector<std::uint32_t> lowest_;
  PartNumbers parts_;
  // Entered and in no part yet.
  std::vector<std::uint32_t> open_;
  std::vector<Visit> visits_;
  std::uint32_t entered_ = 0;
  std::uint32_t found_ = 0;
};

}  // namespace

Digraph digraphOf(std::uint32_t count, const std::vector<Link>& links) {
  Digraph graph;
  graph.first.assign(std::size_t{count} + 1, 0);
  graph.targets.resize(links.size());
  for (const auto& [from, to] : links) ++graph.first[std::size_t{from} + 1];
  std::partial_sum(graph.first.begin(), graph.first.end(), graph.first.begin());
  std::vector<std::uint32_t> next(graph.first.begin(), graph.first.end() - 1);
  for (const auto& [from, to] : links) graph.targets[next[from]++] = to;
  return graph;
}

Digraph reversed(const Digraph& graph) {
  Digraph back;
  back.first.assign(graph.first.size(), 0);
  back.targets.resize(graph.targets.size());
  for (const std::uint32_t target : graph.targets) ++back.first[target + 1];
  std::partial_sum(back.first.begin(), back.first.end(), back.first.begin());
  std::vector<std::uint32_t> next(back.first.begin(), back.first.end() - 1);
  for (std::uint32_t node = 0; node < graph.count(); ++node) {
    for (const std::uint32_t target : graph.of(node)) back.targets[next[target]++] = node;
  }
  return back;
}

PartNumbers strongParts(const Digraph& graph) { return StrongParts(graph).find(); }

PartNumbers weakParts(const Digraph& graph) {
  const Digraph back = reversed(graph);
  PartNumbers parts(graph.count(), none);
  std::uint32_t found = 0;
  std::vector<std::uint32_t> waiting;
  const auto take = [&](std::uint32_t node) {
    if (parts[node] != none) return;
    parts[node] = found;
    waiting.push_back(node);
  };
  for (std::uint32_t root = 0; root < graph.count(); ++root) {
    if (parts[root] != none) continue;
    take(root);
    while (!waiting.empty()) {
      const std::uint32_t node = waiting.back();
      waiting.pop_back();
      std::ranges::for_each(graph.of(node), take);
      std::ranges::for_each(back.of(node), take);
    }
    ++found;
  }
  return parts;
}

std::vector<std::uint32_t> sizesOf(const PartNumbers& parts) {
  std::vector<std::uint32_t> sizes;
  for (const std::uint32_t part : parts) {
    if (part >= sizes.size()) sizes.resize(std::size_t{part} + 1);
    ++sizes[part];
  }
  return sizes;
}

std::vector<bool> reachedFrom(const Digraph& graph, std::span<const std::uint32_t> starts) {
  std::vector<bool> reached(graph.count());
  std::vector<std::uint32_t> waiting;
  const auto take = [&](std::uint32_t node) {
    if (reached[node]) return;
    reached[node] = true;
    waiting.push_back(node);
  };
  std::ranges::for_each(starts, take);
  while (!waiting.empty()) {
    const std::uint32_t node = waiting.back();
    waiting.pop_back();
    std::ranges::for_each(graph.of(node), take);
  }
  return reached;
}

}  // namespace tern::graph
