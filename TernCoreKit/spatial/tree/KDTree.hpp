#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "TernCoreKit/spatial/tree/KDPoint.hpp"
#include "TernCoreKit/spatial/tree/KDTreeArchive.hpp"
#include "TernCoreKit/spatial/tree/KDTreeNodes.hpp"

namespace tern::inline v5 {

/// A point that a saved tree can hold; `decode` gives none for what `encode` did not make.
template <class E>
concept KDTreeArchivable = KDTreePoint<E> && requires(const E& point, const Value& archived) {
  { point.encode() } -> std::convertible_to<Value>;
  { E::decode(archived) } -> std::convertible_to<std::optional<E>>;
};

/// An immutable search tree over points of any type that has coordinates, a squared distance and
/// equality (see KDTreePoint). It splits at the median, one axis a level, and answers what lies
/// nearest to a point, within a radius or within a box.
///
/// Ownership: a value; copies and subtrees share its nodes, which never change. The operations that
///   modify give a new tree, in time linear in the size of this one.
/// Threads: any.
/// Fails: never, but for archives: see `decode`. Coordinates may be infinite or no numbers: a point
///   whose distance is no number is never found by distance.
/// Cost: a query for the nearest looks at about log(n) nodes unless many points are equally near;
///   nothing is allocated while a tree is no deeper than 64 nodes.
///
///     const auto tree = KDTree<KDPoint>::init({{0, 0}, {3, 4}, {6, 0}});
///     tree.nearest({3, 3});                                    // (3, 4)
///     tree.nearest({3, 3}, [](KDPoint p) { return p.y == 0; });  // (6, 0), as near as (0, 0)
template <KDTreePoint E>
class KDTree {
 public:
  /// Least and greatest coordinate on an axis, both within.
  using Bounds = std::pair<double, double>;
  /// What was read: a tree, or an error and the empty tree.
  struct Loaded;
  /// The predicate of a query that restricts nothing.
  struct AcceptAll {
    /// True of every value.
    bool operator()(const E&) const { return true; }
  };

  /// The empty tree.
  KDTree() = default;
  /// The first split is on the axis `depth` modulo the dimensions.
  static KDTree init(const std::vector<E>& values, std::size_t depth = 0);

  /// Whether it holds no value.
  bool isEmpty() const { return begin_ == end_; }
  /// How many values it holds.
  std::size_t count() const { return end_ - begin_; }
  /// How many nodes lie at most below each other.
  std::size_t depth() const;
  /// The value of the root. REQUIRES: the tree is not empty.
  const E& value() const { return root().value; }
  /// The axis at which the root splits. REQUIRES: the tree is not empty.
  std::size_t dimension() const { return root().axis; }
  /// The left subtree of the root; it shares the nodes of this tree.
  /// REQUIRES: the tree is not empty.
  KDTree left() const { return KDTree(nodes_, begin_ + 1, begin_ + root().right); }
  /// The right subtree of the root; it shares the nodes of this tree.
  /// REQUIRES: the tree is not empty.
  KDTree right() const { return KDTree(nodes_, begin_ + root().right, end_); }

  /// Each value before those of its left subtree, these before those of its right one.
  std::vector<E> elements() const;
  /// Visits the values in the order of `elements`.
  template <class Visit>
  void forEach(Visit visit) const;
  /// Whether a value equals the given one.
  bool contains(const E& value) const;

  /// The tree with one value more; `dim` is the axis of the new node when the tree is empty.
  KDTree inserting(const E& value, std::size_t dim) const;
  /// Without every value that equals the given one; `dim` is the axis of the new root.
  KDTree removing(const E& value, std::size_t dim) const;
  /// A tree of what the function makes of each value.
  template <class Function>
  auto map(Function function) const;
  /// A tree of the values that the predicate accepts.
  template <class Predicate>
  KDTree filter(Predicate predicate) const;

  /// The value nearest to the point among those that `where` accepts; of equally near ones the one
  /// that the search meets first. `maxDistance` bounds the squared distance, exclusively: for
  /// values nearer than r pass r * r. A value equal to the point may be the answer although `where`
  /// does not accept it or the bound is 0.
  template <class Predicate = AcceptAll>
  std::optional<E> nearest(const E& to, double maxDistance, Predicate where = {}) const;
  /// The same at any distance.
  template <class Predicate = AcceptAll>
  requires std::predicate<Predicate&, const E&> std::optional<E> nearest(const E& to,
                                                                         Predicate where = {})
  const { return nearest(to, std::numeric_limits<double>::infinity(), std::move(where)); }
  /// Up to k values, nearest first.
  template <class Predicate = AcceptAll>
  std::vector<E> nearestK(std::ptrdiff_t k, const E& to, Predicate where = {}) const;
  /// Every value at most that far away (not squared).
  std::vector<E> allPoints(double within, const E& of) const;
  /// Every value inside the box; an axis without bounds is not looked at. Of values that lie on an
  /// upper bound those behind another one with the same coordinate are left out.
  std::vector<E> elementsIn(const std::vector<Bounds>& box) const;

  /// The same values at the same positions, split on the same axes.
  friend bool operator==(const KDTree& a, const KDTree& b) {
    return std::equal(a.first(), a.last(), b.first(), b.last());
  }
  /// "KDTree of 3 points, depth 2".
  std::string description() const;
  /// With a line for each node as `elements` has them: "axis 0: (3, 4)".
  std::string debugDescription() const;

  /// The tree as a value that `decode` reads.
  Value encode() const requires KDTreeArchivable<E>;
  /// An error, and an empty tree, for what is no archive of such points or not as it was encoded.
  static Loaded decode(const Value& archived) requires KDTreeArchivable<E>;
  /// Writes the archive to a file of the process-wide file system (platform/Files.hpp).
  std::optional<TernError> save(const std::string& to) const requires KDTreeArchivable<E>;
  /// Reads what `save` wrote.
  static Loaded initContentsOf(const std::string& path) requires KDTreeArchivable<E>;

 private:
  using Node = KDTreeNode<E>;
  using Nodes = KDTreeNodes<E>;
  // How far a region lies at least from the point on the first two axes, squared.
  using Offsets = std::array<double, 2>;
  // A node whose one subtree has been searched, and the range of the other, with what the squared
  // distance from the point to both is at least.
  struct Pending {
    std::uint32_t node, begin, end;
    double bound;
    Offsets offsets;
  };
  class PendingStack;
  template <class Predicate>
  struct Nearest;
  template <class Predicate>
  struct NearestK;
  struct Within;

  KDTree(std::shared_ptr<const Nodes> nodes, std::size_t begin, std::size_t end)
      : nodes_(std::move(nodes)),
        begin_(static_cast<std::uint32_t>(begin)),
        end_(static_cast<std::uint32_t>(end)) {}
  explicit KDTree(Nodes nodes) : KDTree(std::make_shared<const Nodes>(std::move(nodes))) {}
  explicit KDTree(std::shared_ptr<const Nodes> nodes) : KDTree(nodes, 0, nodes->nodes.size()) {}
  static Loaded opened(const KDTreeArchive& archive) requires KDTreeArchivable<E>;

  static std::size_t dimensions() { return std::max<std::size_t>(E::dimensions, 1); }
  const Node* first() const { return nodes_ != nullptr ? nodes_->nodes.data() + begin_ : nullptr; }
  const Node* last() const { return first() + count(); }
  const Node& root() const { return *first(); }
  static bool isInside(const E& value, const std::vector<Bounds>& box);
  template <class Collector>
  bool walk(const E& point, Collector& collector, std::uint32_t handful = 1) const;

  std::shared_ptr<const Nodes> nodes_;
  // The range of the nodes that are this tree's.
  std::uint32_t begin_ = 0;
  std::uint32_t end_ = 0;
};

/// What was read: a tree, or an error and the empty tree.
template <KDTreePoint E>
struct [[nodiscard]] KDTree<E>::Loaded {
  /// Empty when there is an error.
  KDTree tree;
  /// Why there is no tree; absent when there is one.
  std::optional<TernError> error;
};

/// @cond Bodies follow.

template <KDTreePoint E>
KDTree<E> KDTree<E>::init(const std::vector<E>& values, std::size_t depth) {
  return KDTree(KDTreeBuilder<E>(values, depth).build());
}

template <KDTreePoint E>
std::size_t KDTree<E>::depth() const {
  if (count() == 0) return 0;
  return KDTreeNodes<E>::of(std::vector<Node>(first(), last()))->depth;
}

template <KDTreePoint E>
std::vector<E> KDTree<E>::elements() const {
  std::vector<E> all;
  all.reserve(count());
  forEach([&](const E& value) { all.push_back(value); });
  return all;
}

template <KDTreePoint E>
template <class Visit>
void KDTree<E>::forEach(Visit visit) const {
  for (const Node* node = first(); node != last(); ++node) visit(node->value);
}

template <KDTreePoint E>
bool KDTree<E>::contains(const E& value) const {
  if constexpr (!kdEqualPointsCoincide<E>) {
    return std::any_of(first(), last(), [&](const Node& node) { return node.value == value; });
  }
  const Node* node = first();
  const Node* end = last();
  while (node != end) {
    if (node->value == value) return true;
    const double split = kdOrder(node->value.kdDimension(node->axis));
    const Node* right = node + node->right;
    const bool isLeft = kdOrder(value.kdDimension(node->axis)) < split;
    end = isLeft ? right : end;
    node = isLeft ? node + 1 : right;
  }
  return false;
}

template <KDTreePoint E>
KDTree<E> KDTree<E>::inserting(const E& value, std::size_t dim) const {
  std::vector<Node> nodes(first(), last());
  std::size_t axis = dim % dimensions();
  std::size_t position = 0;
  for (std::size_t end = nodes.size(); position < end;) {
    Node& node = nodes[position];
    axis = (node.axis + 1) % dimensions();
    const std::size_t right = position + node.right;
    if (kdOrder(value.kdDimension(node.axis)) < kdOrder(node.value.kdDimension(node.axis))) {
      ++node.right;
      ++position;
      end = right;
    } else {
      position = right;
    }
  }
  nodes.insert(nodes.begin() + static_cast<std::ptrdiff_t>(position),
               Node{value, 1, static_cast<std::uint32_t>(axis)});
  return KDTree(*Nodes::of(std::move(nodes)));
}

template <KDTreePoint E>
KDTree<E> KDTree<E>::removing(const E& value, std::size_t dim) const {
  std::vector<E> kept = elements();
  if (std::erase(kept, value) == 0) return *this;
  return init(kept, dim);
}

template <KDTreePoint E>
template <class Function>
auto KDTree<E>::map(Function function) const {
  using F = std::remove_cvref_t<std::invoke_result_t<Function&, const E&>>;
  std::vector<F> mapped;
  mapped.reserve(count());
  forEach([&](const E& value) { mapped.push_back(function(value)); });
  return KDTree<F>::init(mapped, isEmpty() ? 0 : dimension());
}

template <KDTreePoint E>
template <class Predicate>
KDTree<E> KDTree<E>::filter(Predicate predicate) const {
  std::vector<E> kept;
  forEach([&](const E& value) {
    if (predicate(value)) kept.push_back(value);
  });
  return init(kept, isEmpty() ? 0 : dimension());
}

// A path from the root is as long as the tree is deep, which with many equal points is as long as
// the tree has nodes.
template <KDTreePoint E>
class KDTree<E>::PendingStack {
 public:
  explicit PendingStack(std::size_t depth) {
    if (depth > few_.size()) many_.resize(depth);
  }
  Pending* bottom() { return many_.empty() ? few_.data() : many_.data(); }

 private:
  std::array<Pending, 64> few_;
  std::vector<Pending> many_;
};

// Goes to the nearer subtree of each node first, then to the node and its other subtree if the
// collector still wants what lies beyond the split. Subtrees of up to `handful` nodes are first
// offered to the collector as a whole. True when the collector has ended the walk at a node.
//
// What is known of two axes together bounds the distance closer than the split alone. It leaves
// room for a `squaredDistance` that rounds otherwise than the sum here, so that it never leaves out
// what counts. Of more axes the first two do; where there are more than a point has coordinates
// (see KDPoint::dimensions), those past them repeat one.
template <KDTreePoint E>
template <class Collector>
bool KDTree<E>::walk(const E& point, Collector& collector, std::uint32_t handful) const {
  if (isEmpty()) return false;
  constexpr double roundedDown = 1 - 1e-12;
  const Node* const nodes = nodes_->nodes.data();
  PendingStack stack(std::min<std::size_t>(nodes_->depth, count()));
  Pending* const bottom = stack.bottom();
  Pending* top = bottom;
  std::uint32_t begin = begin_;
  std::uint32_t end = end_;
  Offsets offsets{};
  while (true) {
    while (end - begin > handful) {
      const Node& node = nodes[begin];
      const double difference = node.value.kdDimension(node.axis) - point.kdDimension(node.axis);
      const double square = difference * difference;
      if (collector.endsAt(node.value, square)) return true;
      const std::uint32_t right = begin + node.right;
      const bool isLeftNearer = difference > 0;
      const Offsets beyond{node.axis == 0 ? square : offsets[0],
                           node.axis == 1 ? square : offsets[1]};
      // In this order a square that is no number stays the bound.
      const double bound = std::max(square, (beyond[0] + beyond[1]) * roundedDown);
      *top++ = {begin, isLeftNearer ? right : begin + 1, isLeftNearer ? end : right, bound, beyond};
      begin = isLeftNearer ? begin + 1 : right;
      end = isLeftNearer ? right : end;
    }
    if (begin < end && collector.endsAtFew(*this, begin, end)) return true;
    do {
      if (top == bottom) return false;
      const Pending& next = *--top;
      if (!collector.wantsBeyond(next.bound)) continue;
      begin = next.begin;
      end = next.end;
      offsets = next.offsets;
      collector.offer(nodes[next.node].value);
      break;
    } while (true);
  }
}

template <KDTreePoint E>
template <class Predicate>
struct KDTree<E>::Nearest {
  // Looking at so few at once is faster than choosing among them.
  static constexpr std::uint32_t handful = 16;

  const E& point;
  double distance;
  Predicate& where;
  const E* best = nullptr;

  // Where equal points coincide, a value off the point on one axis is not equal to it. The square
  // is no number where both are infinite.
  bool endsAt(const E& value, double square) {
    return !(kdEqualPointsCoincide<E> && square > 0) && value == point && endsWith(value);
  }
  bool endsWith(const E& value) {
    best = &value;
    return true;
  }
  bool endsAtFew(const KDTree& tree, std::uint32_t begin, std::uint32_t end) {
    const Node* const nodes = tree.nodes_->nodes.data();
    if (end - begin == 1) return endsAtBottom(nodes[begin].value);
    return !takeNearestOf(nodes + begin, nodes + end) &&
           KDTree(tree.nodes_, begin, end).walk(point, *this);
  }
  // False where the order in which a walk meets the nodes matters: when one equals the point, or
  // two are equally near.
  bool takeNearestOf(const Node* begin, const Node* end) {
    if constexpr (!kdEqualPointsCoincide<E>) {
      if (std::any_of(begin, end, [&](const Node& node) { return node.value == point; })) {
        return false;
      }
    }
    const auto count = static_cast<std::size_t>(end - begin);
    std::array<double, handful> squared;
    // Two at a time, as each comparison waits for the one before.
    double least = end[-1].value.squaredDistance(point);
    double second = least;
    double total = least;
    squared[count - 1] = least;
    for (std::size_t i = 0; i + 1 < count; i += 2) {
      const double a = squared[i] = begin[i].value.squaredDistance(point);
      const double b = squared[i + 1] = begin[i + 1].value.squaredDistance(point);
      least = a < least ? a : least;
      second = b < second ? b : second;
      total += a + b;
    }
    least = std::min(least, second);
    // The total is no number when one of them is none.
    if (!(least > 0 && total == total)) return false;
    if (!(least < distance)) return true;
    // A bit for each node: which are set is not foreseen, so to make them does not branch.
    constexpr bool areAllAccepted = std::is_same_v<Predicate, AcceptAll>;
    std::uint32_t nearer = 0;
    for (std::size_t i = 0; i < count; ++i) {
      const bool isNearer = areAllAccepted ? squared[i] <= least : squared[i] < distance;
      nearer |= static_cast<std::uint32_t>(isNearer) << i;
    }
    const E* found = nullptr;
    double foundDistance = distance;
    for (; nearer != 0; nearer &= nearer - 1) {
      const auto i = static_cast<std::size_t>(std::countr_zero(nearer));
      if (squared[i] > foundDistance || !where(begin[i].value)) continue;
      if (squared[i] == foundDistance) return false;
      found = &begin[i].value;
      foundDistance = squared[i];
    }
    if (found != nullptr) take(*found, foundDistance);
    return true;
  }
  bool endsAtBottom(const E& value) {
    const double squared = value.squaredDistance(point);
    if (squared < distance && where(value)) {
      take(value, squared);
      return false;
    }
    return !(kdEqualPointsCoincide<E> && squared > 0) && value == point && !where(value) &&
           endsWith(value);
  }
  // A bound that is no number does not say where the point lies.
  bool wantsBeyond(double bound) const { return !(bound >= distance); }
  void offer(const E& value) {
    const double squared = value.squaredDistance(point);
    if (squared < distance && where(value)) take(value, squared);
  }
  void take(const E& value, double squared) {
    best = &value;
    distance = squared;
  }
};

template <KDTreePoint E>
template <class Predicate>
std::optional<E> KDTree<E>::nearest(const E& to, double maxDistance, Predicate where) const {
  Nearest<Predicate> collector{to, maxDistance, where};
  walk(to, collector, collector.handful);
  if (collector.best == nullptr) return std::nullopt;
  return *collector.best;
}

template <KDTreePoint E>
template <class Predicate>
struct KDTree<E>::NearestK {
  struct Entry {
    const E* value;
    double distance;
  };

  const E& point;
  std::size_t k;
  Predicate& where;
  std::vector<Entry> entries;

  bool isFull() const { return entries.size() == k; }
  bool endsAt(const E&, double) const { return false; }
  bool endsAtFew(const KDTree& tree, std::uint32_t begin, std::uint32_t) {
    offer(tree.nodes_->nodes[begin].value);
    return false;
  }
  bool wantsBeyond(double bound) const { return !isFull() || !(bound >= entries.back().distance); }
  void offer(const E& value) {
    const double distance = value.squaredDistance(point);
    if (distance != distance || (isFull() && !(distance < entries.back().distance))) return;
    if (!where(value)) return;
    if (isFull()) entries.pop_back();
    const auto isFarther = [](double a, const Entry& entry) { return a < entry.distance; };
    entries.insert(std::upper_bound(entries.begin(), entries.end(), distance, isFarther),
                   {&value, distance});
  }
};

template <KDTreePoint E>
template <class Predicate>
std::vector<E> KDTree<E>::nearestK(std::ptrdiff_t k, const E& to, Predicate where) const {
  if (k < 1) return {};
  NearestK<Predicate> collector{to, std::min(static_cast<std::size_t>(k), count()), where, {}};
  collector.entries.reserve(collector.k);
  walk(to, collector);
  std::vector<E> found;
  found.reserve(collector.entries.size());
  for (const auto& entry : collector.entries) found.push_back(*entry.value);
  return found;
}

template <KDTreePoint E>
struct KDTree<E>::Within {
  const E& point;
  double radius;
  std::vector<E> found;

  bool endsAt(const E&, double) const { return false; }
  bool endsAtFew(const KDTree& tree, std::uint32_t begin, std::uint32_t) {
    offer(tree.nodes_->nodes[begin].value);
    return false;
  }
  bool wantsBeyond(double bound) const { return !(bound > radius * radius); }
  void offer(const E& value) {
    if (value.squaredDistance(point) <= radius * radius) found.push_back(value);
  }
};

template <KDTreePoint E>
std::vector<E> KDTree<E>::allPoints(double within, const E& of) const {
  if (!(within >= 0)) return {};
  Within collector{of, within, {}};
  walk(of, collector);
  return std::move(collector.found);
}

template <KDTreePoint E>
bool KDTree<E>::isInside(const E& value, const std::vector<Bounds>& box) {
  for (std::size_t axis = 0; axis < std::min(box.size(), dimensions()); ++axis) {
    const double x = value.kdDimension(axis);
    if (!(box[axis].first <= x && x <= box[axis].second)) return false;
  }
  return true;
}

template <KDTreePoint E>
std::vector<E> KDTree<E>::elementsIn(const std::vector<Bounds>& box) const {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  std::vector<E> found;
  std::vector<std::pair<const Node*, const Node*>> pending{{first(), last()}};
  while (!pending.empty()) {
    const auto [node, end] = pending.back();
    pending.pop_back();
    if (node == end) continue;
    if (isInside(node->value, box)) found.push_back(node->value);
    const double x = kdOrder(node->value.kdDimension(node->axis));
    const bool isBounded = node->axis < box.size();
    const auto [lower, upper] = isBounded ? box[node->axis] : Bounds(-infinity, infinity);
    const Node* right = node + node->right;
    if (x < upper || !isBounded) pending.push_back({right, end});
    if (lower < x || !isBounded) pending.push_back({node + 1, right});
  }
  return found;
}

template <KDTreePoint E>
std::string KDTree<E>::description() const {
  return "KDTree of " + std::to_string(count()) + " points, depth " + std::to_string(depth());
}

template <KDTreePoint E>
std::string KDTree<E>::debugDescription() const {
  std::string text = description();
  for (const Node* node = first(); node != last(); ++node) {
    text += "\naxis " + std::to_string(node->axis) + ": (";
    for (std::size_t axis = 0; axis < dimensions(); ++axis) {
      text += (axis > 0 ? ", " : "") + Value(node->value.kdDimension(axis)).printed();
    }
    text += ")";
  }
  return text;
}

template <KDTreePoint E>
Value KDTree<E>::encode() const requires KDTreeArchivable<E> {
  Value nodes = Value::list();
  for (const Node* node = first(); node != last(); ++node) {
    nodes.append(Value::list({node->axis, node->right, node->value.encode()}));
  }
  return KDTreeArchive::seal(std::move(nodes), dimensions());
}

template <KDTreePoint E>
typename KDTree<E>::Loaded KDTree<E>::decode(const Value& archived) requires KDTreeArchivable<E> {
  return opened(KDTreeArchive::open(archived, dimensions()));
}

template <KDTreePoint E>
typename KDTree<E>::Loaded KDTree<E>::opened(const KDTreeArchive& archive) requires
    KDTreeArchivable<E> {
  if (archive.error) return {KDTree(), archive.error};
  std::vector<Node> nodes;
  for (const Value& entry : archive.nodes.items()) {
    const auto fields = entry.items();
    const std::size_t axis = fields.empty() ? 0 : static_cast<std::size_t>(fields[0].integer());
    auto value = fields.size() == 3 ? E::decode(fields[2]) : std::nullopt;
    if (!value || axis >= dimensions())
      return {KDTree(), KDTreeArchive::damaged("a bad node").error};
    nodes.push_back({std::move(*value), static_cast<std::uint32_t>(fields[1].integer()),
                     static_cast<std::uint32_t>(axis)});
  }
  auto shaped = Nodes::of(std::move(nodes));
  if (!shaped) return {KDTree(), KDTreeArchive::damaged("nodes that make no tree").error};
  return {KDTree(std::move(*shaped)), std::nullopt};
}

template <KDTreePoint E>
std::optional<TernError> KDTree<E>::save(const std::string& to) const requires KDTreeArchivable<E> {
  return KDTreeArchive::save(encode(), to);
}

template <KDTreePoint E>
typename KDTree<E>::Loaded KDTree<E>::initContentsOf(const std::string& path) requires
    KDTreeArchivable<E> {
  return opened(KDTreeArchive::load(path, dimensions()));
}

/// @endcond

}  // namespace tern
