// The search with nothing around it: one loop over flat arrays, tuned by hand, that keeps every
// rule of the library's own (accessibility and blocks tested before a link is taken, closed nodes
// stay closed, a score that drops is rewritten in the open list without moving anything). What the
// library may be slower than this by is the price of its interface.
#pragma once

#include <cstdint>
#include <vector>

#include "bench/Adjacency.hpp"

namespace tern::bench {

class Yardstick {
 public:
  explicit Yardstick(const Adjacency& adjacency);

  // The cost of the cheapest route; negative when there is none.
  float search(Query query, std::int32_t accessLevel);

 private:
  struct Link {
    std::uint32_t target;
    float cost;
    float distance;
    std::int32_t accessibility;  // the largest value while blocked
  };
  struct State {
    std::uint32_t stamp = 0;  // the search's number doubled, plus one when closed
    float score = 0;
    float distance = 0;
    std::uint32_t parent = 0;
    std::int32_t usedType = 0;
    std::uint32_t heapPlace = 0;
    std::uint32_t firstLink = 0;
    std::uint32_t endLink = 0;
  };
  struct Entry {
    std::int32_t key;
    std::uint32_t node;
  };

  void put(std::size_t at, Entry entry);
  void siftUp(std::size_t at, Entry entry);
  void removeFirst();
  void expand(std::uint32_t node, std::int32_t accessLevel);

  std::vector<std::uint32_t> numbers_;  // places along the graph, by node
  std::vector<State> states_;
  std::vector<Link> links_;
  std::vector<Entry> heap_;
  std::size_t count_ = 0;
  std::uint32_t stamp_ = 0;
};

}  // namespace tern::bench
