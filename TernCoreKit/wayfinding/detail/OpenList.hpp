// The open list of a search: a textbook array heap of scores with the nodes that they belong to.
//
// Insertion sifts up while the parent is greater; removal moves the last entry to the root and
// sifts it down, to the left child on ties. A score that drops is rewritten where it stands and
// nothing is moved: which of equal or nearly equal routes is found follows from that, so it is part
// of the behaviour.
//
// Source of the heap: J. W. J. Williams, Algorithm 232 (Heapsort), CACM 7(6), 1964.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "TernCoreKit/wayfinding/detail/SearchState.hpp"

namespace tern::inline v5::detail {

// How scores compare while every cost of the graph is plain, and a score can be neither negative
// nor unordered: by their bits, which the heap compares without a branch and sooner than floats.
struct PlainOrder {
  using Key = std::int32_t;

  static Key keyOf(float score) { return std::bit_cast<Key>(score); }
  static bool isGreater(Key a, Key b) { return a > b; }
};

// How any scores compare: what is unordered counts as greater, on both sides.
struct AnyOrder {
  using Key = float;

  static Key keyOf(float score) { return score; }
  static bool isGreater(Key a, Key b) { return !(a <= b); }
};

// Keeps each entry's index in its node's `heapIndex`.
template <class Order>
class OpenList {
 public:
  explicit OpenList(SearchState& state) : states_(state.nodes.data()), heap_(state.open.data()) {}

  bool isEmpty() const { return count_ == 0; }
  std::size_t size() const { return count_; }

  // REQUIRES: not empty.
  Position first() const { return heap_[1].position(); }

  void insert(Position position, float score) {
    siftUp(++count_, {std::bit_cast<std::uint32_t>(Order::keyOf(score)), position});
  }

  // REQUIRES: not empty.
  void removeFirst() {
    const OpenEntry last = heap_[count_--];
    if (count_ > 0) siftDown(last);
  }

  void rewriteScore(const NodeState& state, float score) {
    OpenEntry& entry = heap_[state.heapIndex];
    entry = {std::bit_cast<std::uint32_t>(Order::keyOf(score)), entry.position()};
  }

 private:
  static bool isGreater(OpenEntry a, OpenEntry b) {
    using Key = typename Order::Key;
    return Order::isGreater(std::bit_cast<Key>(a.key()), std::bit_cast<Key>(b.key()));
  }

  void put(std::size_t at, OpenEntry entry) {
    heap_[at] = entry;
    states_[numberOf(entry.position())].heapIndex = static_cast<std::uint32_t>(at);
  }

  void siftUp(std::size_t at, OpenEntry entry) {
    while (at > 1) {
      const OpenEntry parent = heap_[at / 2];
      if (!isGreater(parent, entry)) break;
      put(at, parent);
      at /= 2;
    }
    put(at, entry);
  }

  void siftDown(OpenEntry entry) {
    std::size_t at = 1;
    std::size_t child = 2;
    while (child < count_) {
      child += static_cast<std::size_t>(isGreater(heap_[child], heap_[child + 1]));
      const OpenEntry lesser = heap_[child];
      if (!isGreater(entry, lesser)) {
        put(at, entry);
        return;
      }
      put(at, lesser);
      at = child;
      child = 2 * at;
    }
    if (child == count_ && isGreater(entry, heap_[child])) {
      put(at, heap_[child]);
      at = child;
    }
    put(at, entry);
  }

  NodeState* const states_;
  OpenEntry* const heap_;  // the root at 1
  std::size_t count_ = 0;
};

}  // namespace tern::detail
