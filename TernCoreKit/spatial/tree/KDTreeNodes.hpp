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
/// Points may be equal that lie apart. A type of which none are can say so by a static member
/// `equalPointsCoincide` that is true: its queries then compare fewer points.
template <class E>
concept KDTreePoint = std::copyable<E> && std::equality_comparable<E> &&
    requires(const E& point, std::size_t axis) {
  { E::dimensions } -> std::convertible_to<std::size_t>;
  { point.kdDimension(axis) } -> std::convertible_to<double>;
  { point.squaredDistance(point) } -> std::convertible_to<double>;
};

/// @cond What KDTree is made of; no program needs it.

template <class E>
inline constexpr bool kdEqualPointsCoincide = false;

template <class E>
requires(E::equalPointsCoincide) inline constexpr bool kdEqualPointsCoincide<E> = true;

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
// only deals out the lists of the other axes. Where a split has next to nothing on its left, as
// among points that coincide or nearly do, dealing out the whole range for each node would take
// quadratic time: such nodes are peeled off linked lists, at the cost of what they take along.
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
    bool isLopsided = false;

    std::size_t size() const { return end - begin; }
  };
  // The values of a range in the order of one axis, as a list that any can be taken out of.
  struct Line {
    std::uint32_t first, median;
  };
  using Lines = std::vector<Line>;
  // A left part of at most such a share of its range is next to nothing.
  static constexpr std::size_t lopsidedShare = 8;

  std::size_t axisBelow(std::size_t axis) const { return axis + 1 < dimensions_ ? axis + 1 : 0; }
  double at(std::uint32_t index, std::size_t axis) const {
    return kdOrder(values_[index].kdDimension(axis));
  }
  void add(std::uint32_t index, std::size_t right, std::size_t axis) {
    nodes_.push_back(
        {values_[index], static_cast<std::uint32_t>(right), static_cast<std::uint32_t>(axis)});
  }
  void add(const Range& range);
  std::size_t split(const Range& range);
  // Whether the coordinate counts as the median, to which it is at most equal.
  static bool isLevel(double coordinate, double median) {
    return median - coordinate < std::numeric_limits<double>::epsilon() || coordinate == median;
  }
  Range peel(Range range);
  Lines link(const Range& range);
  void unlink(std::uint32_t index, std::size_t size, Lines& lines);
  void addPeeled(const Range& range, std::uint32_t node, std::size_t lefts, Lines& lines);
  void writeBack(const Range& range, const Lines& lines);

  const std::vector<E>& values_;
  std::size_t dimensions_;
  std::size_t firstAxis_;
  // For each axis the indices of the values in the order of their coordinates. What is left of a
  // range lies at the same positions of every list.
  std::vector<Indices> sorted_;
  // For each axis the position that each value had in that order at first.
  std::vector<Indices> ranks_;
  Indices spare_;
  // For each axis what stands before and behind each value in the list that it is peeled off. Empty
  // until a range is.
  std::vector<Indices> before_;
  std::vector<Indices> behind_;
  std::vector<Node> nodes_;
  std::size_t treeDepth_ = 0;
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
  add({0, values_.size(), firstAxis_, 0});
  return {std::move(nodes_), treeDepth_};
}

// Calls itself only for the left of a lopsided split, so that it is never many calls deep.
template <KDTreePoint E>
void KDTreeBuilder<E>::add(const Range& whole) {
  std::vector<Range> pending{whole};
  while (!pending.empty()) {
    Range range = pending.back();
    pending.pop_back();
    if (range.isLopsided) range = peel(range);
    while (range.begin < range.end) {
      treeDepth_ = std::max(treeDepth_, ++range.depth);
      const std::size_t middle = split(range);
      add(sorted_[range.axis][middle], middle - range.begin + 1, range.axis);
      range.axis = axisBelow(range.axis);
      if (middle + 1 < range.end) {
        const bool isLopsided = (middle - range.begin) * lopsidedShare < range.size();
        constexpr std::size_t few = 32;  // not worth the lists
        pending.push_back(
            {middle + 1, range.end, range.axis, range.depth, isLopsided && range.size() > few});
      }
      range.end = middle;
    }
  }
}

// Gives the position of the node in the list of the range's axis, and brings what lies before and
// behind it there to the same positions of the other lists.
template <KDTreePoint E>
std::size_t KDTreeBuilder<E>::split(const Range& range) {
  const Indices& sorted = sorted_[range.axis];
  std::size_t middle = range.begin + (range.end - range.begin) / 2;
  if (middle == range.begin) return middle;
  const double median = at(sorted[middle], range.axis);
  while (middle > range.begin && isLevel(at(sorted[middle - 1], range.axis), median)) --middle;
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

// Makes nodes as long as the splits are lopsided, and gives what is left of the range.
template <KDTreePoint E>
auto KDTreeBuilder<E>::peel(Range range) -> Range {
  Lines lines = link(range);
  for (; range.begin < range.end; range.axis = axisBelow(range.axis)) {
    const double median = at(lines[range.axis].median, range.axis);
    std::uint32_t node = lines[range.axis].first;
    std::size_t lefts = 0;
    for (; !isLevel(at(node, range.axis), median); ++lefts) node = behind_[range.axis][node];
    if (lefts * lopsidedShare >= range.size()) break;
    treeDepth_ = std::max(treeDepth_, ++range.depth);
    addPeeled(range, node, lefts, lines);
    range.begin += lefts + 1;
  }
  writeBack(range, lines);
  range.isLopsided = false;
  return range;
}

template <KDTreePoint E>
auto KDTreeBuilder<E>::link(const Range& range) -> Lines {
  before_.resize(dimensions_);
  behind_.resize(dimensions_);
  Lines lines;
  for (std::size_t axis = 0; axis < dimensions_; ++axis) {
    // One place more, for what stands beyond both ends.
    before_[axis].resize(values_.size() + 1);
    behind_[axis].resize(values_.size() + 1);
    const Indices& sorted = sorted_[axis];
    const auto beyond = static_cast<std::uint32_t>(values_.size());
    before_[axis][sorted[range.begin]] = beyond;
    behind_[axis][sorted[range.end - 1]] = beyond;
    for (std::size_t i = range.begin; i + 1 < range.end; ++i) {
      behind_[axis][sorted[i]] = sorted[i + 1];
      before_[axis][sorted[i + 1]] = sorted[i];
    }
    lines.push_back({sorted[range.begin], sorted[range.begin + range.size() / 2]});
  }
  return lines;
}

// Takes one of so many out of the lists; each median stays the one that half of the others precede.
template <KDTreePoint E>
void KDTreeBuilder<E>::unlink(std::uint32_t index, std::size_t size, Lines& lines) {
  const bool movesDown = size % 2 == 0;
  for (std::size_t axis = 0; axis < dimensions_; ++axis) {
    Line& line = lines[axis];
    Indices& before = before_[axis];
    Indices& behind = behind_[axis];
    const std::uint32_t rank = ranks_[axis][index];
    const std::uint32_t medianRank = ranks_[axis][line.median];
    if (movesDown && rank >= medianRank) {
      line.median = before[line.median];
    } else if (!movesDown && rank <= medianRank) {
      line.median = behind[line.median];
    }
    if (line.first == index) line.first = behind[index];
    behind[before[index]] = behind[index];
    before[behind[index]] = before[index];
  }
}

// Takes the node and its left part, which precedes it, out of the lists and makes nodes of them.
template <KDTreePoint E>
void KDTreeBuilder<E>::addPeeled(const Range& range, std::uint32_t node, std::size_t lefts,
                                 Lines& lines) {
  Indices taken(lefts);
  std::uint32_t next = lines[range.axis].first;
  for (std::uint32_t& index : taken) {
    index = next;
    next = behind_[range.axis][next];
  }
  std::size_t size = range.size();
  for (const std::uint32_t index : taken) unlink(index, size--, lines);
  unlink(node, size, lines);
  for (std::size_t axis = 0; axis < dimensions_; ++axis) {
    std::ranges::sort(taken, {}, [&](std::uint32_t index) { return ranks_[axis][index]; });
    std::ranges::copy(taken, sorted_[axis].begin() + static_cast<std::ptrdiff_t>(range.begin));
  }
  add(node, lefts + 1, range.axis);
  add({range.begin, range.begin + lefts, axisBelow(range.axis), range.depth});
}

// Puts what is left of the range where it lies in the lists of a split.
template <KDTreePoint E>
void KDTreeBuilder<E>::writeBack(const Range& range, const Lines& lines) {
  for (std::size_t axis = 0; axis < dimensions_; ++axis) {
    std::uint32_t next = lines[axis].first;
    for (std::size_t i = range.begin; i < range.end; ++i, next = behind_[axis][next]) {
      sorted_[axis][i] = next;
    }
  }
}

/// @endcond

}  // namespace tern
