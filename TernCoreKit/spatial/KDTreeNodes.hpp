// How the nodes of a k-d tree lie in memory, and how they are put there. Used by KDTree.
//
// A subtree is a range of nodes: its root, then all of its left subtree, then all of its right one.
// Coordinates that are no number stand where positive infinity stands.
//
// Ownership: values. Threads: as a standard container. Fails: never.
#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace tern {

// What a k-d tree can hold. Equal points have equal coordinates.
template <class E>
concept KDTreePoint = std::copyable<E> && std::equality_comparable<E> &&
    requires(const E& point, std::size_t axis) {
  { E::dimensions } -> std::convertible_to<std::size_t>;
  { point.kdDimension(axis) } -> std::convertible_to<double>;
  { point.squaredDistance(point) } -> std::convertible_to<double>;
};

template <KDTreePoint E>
struct KDTreeNode {
  E value;
  // The node's distance from its right subtree; one more than the size of the left one.
  std::uint32_t right = 1;
  // The axis at which the node splits.
  std::uint32_t axis = 0;

  friend bool operator==(const KDTreeNode&, const KDTreeNode&) = default;
};

inline double kdOrder(double coordinate) {
  return coordinate == coordinate ? coordinate : std::numeric_limits<double>::infinity();
}

template <KDTreePoint E>
struct KDTreeNodes {
  using Node = KDTreeNode<E>;

  std::vector<Node> nodes;
  // How many nodes lie at most below each other.
  std::size_t depth = 0;

  // Keeps the depth, or is none when the nodes do not lie as a tree's do.
  static std::optional<KDTreeNodes> of(std::vector<Node> nodes);
};

// Splits at the median, one axis a level. Of values with equal coordinates the one that came first
// in the list becomes the node, and no other stands left of it; coordinates that differ by less
// than the machine's epsilon count as equal. The time is that of sorting the points once for each
// axis, however many of them coincide.
template <KDTreePoint E>
class KDTreeBuilder {
 public:
  KDTreeBuilder(const std::vector<E>& values, std::size_t firstAxis);
  KDTreeNodes<E> build();

 private:
  using Node = KDTreeNode<E>;
  struct Range {
    std::size_t begin, end, axis, depth;
    // How many levels in succession before this one had nothing on the left.
    std::size_t emptyLefts;
  };

  std::size_t axisBelow(std::size_t axis) const { return axis + 1 < dimensions_ ? axis + 1 : 0; }
  double at(const Node& node, std::size_t axis) const {
    return kdOrder(node.value.kdDimension(axis));
  }
  auto before(std::size_t axis) const {
    return [this, axis](const Node& a, const Node& b) {
      const double x = at(a, axis);
      const double y = at(b, axis);
      return x < y || (x == y && a.right < b.right);
    };
  }
  using Place = typename std::vector<Node>::iterator;
  void select(Place begin, Place middle, Place end, std::size_t axis);
  std::size_t split(const Range& range);
  Range takeCoincident(Range range);

  std::size_t dimensions_;
  std::size_t firstAxis_;
  // While a node has no place yet its `right` is its place in the list of values.
  std::vector<Node> nodes_;
};

// Bodies follow.

template <KDTreePoint E>
std::optional<KDTreeNodes<E>> KDTreeNodes<E>::of(std::vector<Node> nodes) {
  struct Subtree {
    std::size_t root, end;
  };
  std::vector<Subtree> above;
  std::size_t depth = 0;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    while (!above.empty() && above.back().end <= i) above.pop_back();
    std::size_t end = nodes.size();
    if (!above.empty()) {
      const std::size_t right = above.back().root + nodes[above.back().root].right;
      end = i < right ? right : above.back().end;
    }
    if (nodes[i].right < 1 || nodes[i].right > end - i) return std::nullopt;
    above.push_back({i, end});
    depth = std::max(depth, above.size());
  }
  return KDTreeNodes{std::move(nodes), depth};
}

template <KDTreePoint E>
KDTreeBuilder<E>::KDTreeBuilder(const std::vector<E>& values, std::size_t firstAxis)
    : dimensions_(std::max<std::size_t>(E::dimensions, 1)), firstAxis_(firstAxis % dimensions_) {
  nodes_.reserve(values.size());
  for (const E& value : values) {
    nodes_.push_back({value, static_cast<std::uint32_t>(nodes_.size()), 0});
  }
}

template <KDTreePoint E>
KDTreeNodes<E> KDTreeBuilder<E>::build() {
  std::size_t depth = 0;
  std::vector<Range> pending{{0, nodes_.size(), firstAxis_, 0, 0}};
  while (!pending.empty()) {
    Range range = pending.back();
    pending.pop_back();
    while (range.begin < range.end) {
      if (range.emptyLefts >= dimensions_) {
        range = takeCoincident(range);
        depth = std::max(depth, range.depth);
        if (range.begin == range.end) break;
      }
      depth = std::max(depth, ++range.depth);
      const std::size_t middle = split(range);
      std::swap(nodes_[range.begin], nodes_[middle]);
      Node& node = nodes_[range.begin];
      node.right = static_cast<std::uint32_t>(middle - range.begin + 1);
      node.axis = static_cast<std::uint32_t>(range.axis);
      const std::size_t below = axisBelow(range.axis);
      const std::size_t emptyLefts = middle == range.begin ? range.emptyLefts + 1 : 0;
      pending.push_back({middle + 1, range.end, below, range.depth, emptyLefts});
      range = {range.begin + 1, middle + 1, below, range.depth, 0};
    }
  }
  return {std::move(nodes_), depth};
}

// As std::nth_element, by comparisons that do not branch: which way they go cannot be foreseen.
template <KDTreePoint E>
void KDTreeBuilder<E>::select(Place begin, Place middle, Place end, std::size_t axis) {
  constexpr std::ptrdiff_t few = 4;
  const auto isBefore = before(axis);
  for (int rounds = 0; end - begin > few; ++rounds) {
    if (rounds == 32) return std::nth_element(begin, middle, end, isBefore);
    const auto pivot = begin + (end - begin) / 2;
    if (isBefore(end[-1], *begin)) std::iter_swap(begin, end - 1);
    if (isBefore(*pivot, *begin)) std::iter_swap(begin, pivot);
    if (isBefore(*pivot, end[-1])) std::iter_swap(pivot, end - 1);
    // The middle one of the three is now the last.
    const double split = at(end[-1], axis);
    const std::uint32_t order = end[-1].right;
    auto place = begin;
    for (auto each = begin; each != end - 1; ++each) {
      const double x = at(*each, axis);
      const bool isLess = (x < split) | ((x == split) & (each->right < order));
      std::swap(*each, *place);
      place += isLess;
    }
    std::iter_swap(place, end - 1);
    if (place == middle) return;
    (place < middle ? begin : end) = place < middle ? place + 1 : place;
  }
  for (auto each = begin; each != end; ++each) {
    const Node node = *each;
    auto place = each;
    for (; place != begin && isBefore(node, place[-1]); --place) *place = place[-1];
    *place = node;
  }
}

// Brings the node of the range to its place, what is less before it and the rest behind.
template <KDTreePoint E>
std::size_t KDTreeBuilder<E>::split(const Range& range) {
  const auto begin = nodes_.begin() + static_cast<std::ptrdiff_t>(range.begin);
  const auto end = nodes_.begin() + static_cast<std::ptrdiff_t>(range.end);
  const auto middle = begin + (end - begin) / 2;
  select(begin, middle, end, range.axis);
  const double median = at(*middle, range.axis);
  const auto run = std::partition(begin, middle, [&](const Node& node) {
    const double coordinate = at(node, range.axis);
    return !(median - coordinate < std::numeric_limits<double>::epsilon() || coordinate == median);
  });
  if (run != middle) std::iter_swap(run, std::min_element(run, middle, before(range.axis)));
  return static_cast<std::size_t>(run - nodes_.begin());
}

// Where most points of a range are the least on their axis they become, one by one, nodes without a
// left subtree. Looking through the whole range for each of them would take quadratic time.
template <KDTreePoint E>
typename KDTreeBuilder<E>::Range KDTreeBuilder<E>::takeCoincident(Range range) {
  std::vector<Node> rest(nodes_.begin() + static_cast<std::ptrdiff_t>(range.begin),
                         nodes_.begin() + static_cast<std::ptrdiff_t>(range.end));
  std::ranges::sort(rest, {}, &Node::right);
  std::vector<double> least(dimensions_, std::numeric_limits<double>::infinity());
  std::vector<std::vector<std::size_t>> leastOn(dimensions_);
  for (std::size_t axis = 0; axis < dimensions_; ++axis) {
    for (const Node& node : rest) least[axis] = std::min(least[axis], at(node, axis));
    for (std::size_t i = rest.size(); i-- > 0;) {
      if (at(rest[i], axis) == least[axis]) leastOn[axis].push_back(i);
    }
  }
  std::vector<bool> isTaken(rest.size());
  std::vector<std::size_t> count(dimensions_);
  for (std::size_t axis = 0; axis < dimensions_; ++axis) count[axis] = leastOn[axis].size();
  while (range.begin != range.end && count[range.axis] > (range.end - range.begin) / 2) {
    while (isTaken[leastOn[range.axis].back()]) leastOn[range.axis].pop_back();
    const std::size_t taken = leastOn[range.axis].back();
    isTaken[taken] = true;
    for (std::size_t axis = 0; axis < dimensions_; ++axis) {
      if (at(rest[taken], axis) == least[axis]) --count[axis];
    }
    nodes_[range.begin++] = {rest[taken].value, 1, static_cast<std::uint32_t>(range.axis)};
    range.axis = axisBelow(range.axis);
    ++range.depth;
  }
  std::size_t place = range.begin;
  for (std::size_t i = 0; i < rest.size(); ++i) {
    if (!isTaken[i]) nodes_[place++] = std::move(rest[i]);
  }
  range.emptyLefts = 0;
  return range;
}

}  // namespace tern
