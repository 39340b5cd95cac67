// How the nodes of a k-d tree lie in memory, and how they are put there. Used by KDTree.
//
// A subtree is a range of nodes: its root, then all of its left subtree, then all of its right one.
// Coordinates that are no number stand where positive infinity stands.
//
// Ownership: values. Threads: as a standard container. Fails: never.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

namespace tern::inline v5 {

/// What a k-d tree can hold: `dimensions` axes, the coordinate on each, and the squared distance.
/// Equal points have equal coordinates.
template <class E>
concept KDTreePoint = std::copyable<E> && std::equality_comparable<E> &&
    requires(const E& point, std::size_t axis) {
  { E::dimensions } -> std::convertible_to<std::size_t>;
  { point.kdDimension(axis) } -> std::convertible_to<double>;
  { point.squaredDistance(point) } -> std::convertible_to<double>;
};

/// @cond What KDTree is made of; no program needs it.

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

struct KDSortEntry {
  std::uint64_t key;
  std::uint32_t index;
};

// Orders as the coordinates do, of which none may be no number.
inline std::uint64_t kdSortKey(double coordinate) {
  // The addition makes one zero of the two.
  const auto bits = std::bit_cast<std::uint64_t>(coordinate + 0.0);
  constexpr std::uint64_t sign = std::uint64_t{1} << 63U;
  return (bits & sign) != 0 ? ~bits : bits | sign;
}

// Sorts by the keys, digit by digit, and keeps the order of equal ones.
inline void kdSort(std::vector<KDSortEntry>& entries, std::vector<KDSortEntry>& buffer) {
  constexpr std::size_t digits = 8;
  constexpr std::size_t radix = 256;
  const auto digitOf = [](const KDSortEntry& entry, std::size_t digit) {
    return (entry.key >> (digit * 8)) % radix;
  };
  std::array<std::array<std::uint32_t, radix>, digits> counts{};
  for (const KDSortEntry& entry : entries) {
    for (std::size_t digit = 0; digit < digits; ++digit) ++counts[digit][digitOf(entry, digit)];
  }
  for (std::size_t digit = 0; digit < digits && !entries.empty(); ++digit) {
    auto& next = counts[digit];
    // Many coordinates are short numbers, of which most digits agree.
    if (next[digitOf(entries[0], digit)] == entries.size()) continue;
    std::exclusive_scan(next.begin(), next.end(), next.begin(), std::uint32_t{0});
    for (const KDSortEntry& entry : entries) buffer[next[digitOf(entry, digit)]++] = entry;
    entries.swap(buffer);
  }
}

// Splits at the median, one axis a level. Of values with equal coordinates the one that came first
// in the list becomes the node, and no other stands left of it; coordinates that differ by less
// than the machine's epsilon count as equal. The values are sorted once for each axis; a split then
// only deals out the lists of the other axes, however many of the points coincide.
template <KDTreePoint E>
class KDTreeBuilder {
 public:
  // The values must outlive the builder.
  KDTreeBuilder(const std::vector<E>& values, std::size_t firstAxis);
  KDTreeNodes<E> build();

 private:
  using Node = KDTreeNode<E>;
  using Indices = std::vector<std::uint32_t>;
  struct Range {
    std::size_t begin, end, axis, depth;
    // How many levels in succession before this one had nothing on the left.
    std::size_t emptyLefts;
  };

  std::size_t axisBelow(std::size_t axis) const { return axis + 1 < dimensions_ ? axis + 1 : 0; }
  double at(std::uint32_t index, std::size_t axis) const {
    return kdOrder(values_[index].kdDimension(axis));
  }
  void add(std::uint32_t index, std::size_t right, std::size_t axis) {
    nodes_.push_back(
        {values_[index], static_cast<std::uint32_t>(right), static_cast<std::uint32_t>(axis)});
  }
  std::size_t split(const Range& range);
  Range takeCoincident(Range range);

  const std::vector<E>& values_;
  std::size_t dimensions_;
  std::size_t firstAxis_;
  // For each axis the indices of the values in the order of their coordinates. What is left of a
  // range lies at the same positions of every list.
  std::vector<Indices> sorted_;
  // For each axis the position that each value had in that order at first.
  std::vector<Indices> ranks_;
  Indices spare_;
  // By index: which have become nodes because they coincide. Empty while none has.
  std::vector<bool> isTaken_;
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
    : values_(values),
      dimensions_(std::max<std::size_t>(E::dimensions, 1)),
      firstAxis_(firstAxis % dimensions_),
      spare_(values.size()) {
  std::vector<KDSortEntry> entries(values.size());
  std::vector<KDSortEntry> buffer(values.size());
  for (std::size_t axis = 0; axis < dimensions_; ++axis) {
    for (std::uint32_t i = 0; i < values.size(); ++i) entries[i] = {kdSortKey(at(i, axis)), i};
    kdSort(entries, buffer);
    Indices& sorted = sorted_.emplace_back(values.size());
    Indices& ranks = ranks_.emplace_back(values.size());
    for (std::uint32_t position = 0; position < values.size(); ++position) {
      sorted[position] = entries[position].index;
      ranks[sorted[position]] = position;
    }
  }
}

template <KDTreePoint E>
KDTreeNodes<E> KDTreeBuilder<E>::build() {
  nodes_.reserve(values_.size());
  std::size_t depth = 0;
  std::vector<Range> pending{{0, values_.size(), firstAxis_, 0, 0}};
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
      add(sorted_[range.axis][middle], middle - range.begin + 1, range.axis);
      range.axis = axisBelow(range.axis);
      if (middle + 1 < range.end) {
        const std::size_t emptyLefts = middle == range.begin ? range.emptyLefts + 1 : 0;
        pending.push_back({middle + 1, range.end, range.axis, range.depth, emptyLefts});
      }
      range.end = middle;
      range.emptyLefts = 0;
    }
  }
  return {std::move(nodes_), depth};
}

// Gives the position of the node in the list of the range's axis, and brings what lies before and
// behind it there to the same positions of the other lists.
template <KDTreePoint E>
std::size_t KDTreeBuilder<E>::split(const Range& range) {
  const Indices& sorted = sorted_[range.axis];
  std::size_t middle = range.begin + (range.end - range.begin) / 2;
  if (middle == range.begin) return middle;
  const double median = at(sorted[middle], range.axis);
  const auto isLevel = [&](std::size_t position) {
    const double coordinate = at(sorted[position], range.axis);
    return median - coordinate < std::numeric_limits<double>::epsilon() || coordinate == median;
  };
  while (middle > range.begin && isLevel(middle - 1)) --middle;
  const std::uint32_t* const ranks = ranks_[range.axis].data();
  const std::uint32_t rank = ranks[sorted[middle]];
  for (std::size_t axis = 0; axis < dimensions_; ++axis) {
    if (axis == range.axis) continue;
    // Writes to both sides each time, as which one it is cannot be foreseen.
    std::uint32_t* const list = sorted_[axis].data();
    std::uint32_t* const right = spare_.data();
    std::size_t lefts = range.begin;
    std::size_t rights = 0;
    for (std::size_t i = range.begin; i < range.end; ++i) {
      const std::uint32_t index = list[i];
      list[lefts] = right[rights] = index;
      lefts += ranks[index] < rank;
      rights += ranks[index] > rank;
    }
    std::copy_n(right, rights, list + middle + 1);
  }
  return middle;
}

// Where most points of a range are the least on their axis they become, one by one, nodes without a
// left subtree. Dealing out the whole range for each of them would take quadratic time.
template <KDTreePoint E>
typename KDTreeBuilder<E>::Range KDTreeBuilder<E>::takeCoincident(Range range) {
  const std::size_t end = range.end;
  std::vector<double> least(dimensions_);
  std::vector<std::size_t> count(dimensions_);
  std::vector<std::size_t> next(dimensions_, range.begin);
  for (std::size_t axis = 0; axis < dimensions_; ++axis) {
    const Indices& sorted = sorted_[axis];
    least[axis] = at(sorted[range.begin], axis);
    std::size_t position = range.begin;
    while (position < end && at(sorted[position], axis) == least[axis]) ++position;
    count[axis] = position - range.begin;
  }
  isTaken_.resize(values_.size());
  while (range.begin != range.end && count[range.axis] > (range.end - range.begin) / 2) {
    const Indices& sorted = sorted_[range.axis];
    while (isTaken_[sorted[next[range.axis]]]) ++next[range.axis];
    const std::uint32_t taken = sorted[next[range.axis]];
    isTaken_[taken] = true;
    for (std::size_t axis = 0; axis < dimensions_; ++axis) {
      count[axis] -= at(taken, axis) == least[axis];
    }
    add(taken, 1, range.axis);
    range.axis = axisBelow(range.axis);
    ++range.depth;
    --range.end;
  }
  for (Indices& sorted : sorted_) {
    const auto first = sorted.begin() + static_cast<std::ptrdiff_t>(range.begin);
    std::remove_if(first, sorted.begin() + static_cast<std::ptrdiff_t>(end),
                   [&](std::uint32_t index) { return isTaken_[index]; });
  }
  range.emptyLefts = 0;
  return range;
}

/// @endcond

}  // namespace tern
