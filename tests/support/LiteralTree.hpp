// A k-d tree as plain as can be: linked nodes, sorted lists and recursion, for points of at most a
// few hundred. What the library's tree answers must be what this one answers, in the same order.
//
// Ownership: values. Threads: one. Fails: never.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tern::test {

template <class E>
struct LiteralTree {
  using Accept = std::function<bool(const E&)>;

  struct Node {
    std::unique_ptr<Node> left;
    E value;
    std::size_t axis;
    std::unique_ptr<Node> right;
  };
  std::unique_ptr<Node> root;

  explicit LiteralTree(const std::vector<E>& values, std::size_t depth = 0)
      : root(build(values, depth)) {}

  // The values come in the order of the list that the tree is made of.
  static std::unique_ptr<Node> build(std::vector<E> values, std::size_t depth) {
    if (values.empty()) return nullptr;
    const std::size_t axis = depth % E::dimensions;
    std::vector<E> sorted = values;
    std::ranges::stable_sort(sorted, {}, [=](const E& e) { return e.kdDimension(axis); });
    std::size_t median = sorted.size() / 2;
    const double split = sorted[median].kdDimension(axis);
    while (median > 0 && std::abs(sorted[median - 1].kdDimension(axis) - split) <
                             std::numeric_limits<double>::epsilon()) {
      --median;
    }
    const E value = sorted[median];
    const double least = value.kdDimension(axis);
    std::vector<E> left;
    std::vector<E> right;
    bool isTaken = false;
    for (const E& e : values) {
      if (!isTaken && e.isSameAs(value)) {
        isTaken = true;
      } else {
        (e.kdDimension(axis) < least ? left : right).push_back(e);
      }
    }
    return std::make_unique<Node>(
        Node{build(left, depth + 1), value, axis, build(right, depth + 1)});
  }

  std::optional<E> nearest(const E& to, double maxDistance, const Accept& where) const {
    std::optional<E> best;
    double distance = maxDistance;
    nearest(root.get(), to, where, best, distance);
    return best;
  }
  static void nearest(const Node* node, const E& to, const Accept& where, std::optional<E>& best,
                      double& distance) {
    if (node == nullptr) return;
    const auto consider = [&] {
      const double squared = node->value.squaredDistance(to);
      if (!where(node->value) || !(squared < distance)) return;
      best = node->value;
      distance = squared;
    };
    const bool isBottom = node->left == nullptr && node->right == nullptr;
    if (isBottom && where(node->value)) return consider();
    if (node->value == to) {
      best = node->value;
      distance = 0;
      return;
    }
    const double diff = node->value.kdDimension(node->axis) - to.kdDimension(node->axis);
    nearest((diff > 0 ? node->left : node->right).get(), to, where, best, distance);
    if (!(diff * diff < distance)) return;
    consider();
    nearest((diff > 0 ? node->right : node->left).get(), to, where, best, distance);
  }

  std::vector<E> nearestK(std::size_t k, const E& to, const Accept& where) const {
    std::vector<std::pair<E, double>> queue;
    nearestK(root.get(), k, to, where, queue);
    std::vector<E> values;
    for (const auto& [value, distance] : queue) values.push_back(value);
    return values;
  }
  static void nearestK(const Node* node, std::size_t k, const E& to, const Accept& where,
                       std::vector<std::pair<E, double>>& queue) {
    if (node == nullptr) return;
    const double diff = node->value.kdDimension(node->axis) - to.kdDimension(node->axis);
    nearestK((diff > 0 ? node->left : node->right).get(), k, to, where, queue);
    const double squared = node->value.squaredDistance(to);
    if (where(node->value) && (queue.size() < k || squared < queue.back().second)) {
      auto place = queue.begin();
      while (place != queue.end() && !(place->second > squared)) ++place;
      queue.insert(place, {node->value, squared});
      if (queue.size() > k) queue.pop_back();
    }
    if (queue.size() < k || diff * diff < queue.back().second) {
      nearestK((diff > 0 ? node->right : node->left).get(), k, to, where, queue);
    }
  }

  static void elementsIn(const Node* node, const std::vector<std::pair<double, double>>& box,
                         std::vector<E>& found) {
    if (node == nullptr) return;
    bool isInside = true;
    for (std::size_t axis = 0; axis < box.size(); ++axis) {
      const double x = node->value.kdDimension(axis);
      isInside = isInside && box[axis].first <= x && x <= box[axis].second;
    }
    if (isInside) found.push_back(node->value);
    const double x = node->value.kdDimension(node->axis);
    if (box[node->axis].first < x) elementsIn(node->left.get(), box, found);
    if (x < box[node->axis].second) elementsIn(node->right.get(), box, found);
  }

  // Each value before those of its left subtree, these before those of its right one.
  static void list(const Node* node, std::vector<std::pair<E, std::size_t>>& all) {
    if (node == nullptr) return;
    all.emplace_back(node->value, node->axis);
    list(node->left.get(), all);
    list(node->right.get(), all);
  }
};

}  // namespace tern::test
