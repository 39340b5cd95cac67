// The library's grid and search beside their literal twins, over the same records. Whatever is done
// is done to both.
//
// A check gives what differs, and nothing where they agree to the last bit (one NaN is as good as
// another):
//
//   Twins twins(randomVenue(tape));
//   RC_ASSERT(twins.differenceOfGrids() == "");
//   RC_ASSERT(twins.search(12, 40, 100) == "");
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/LiteralGrid.hpp"
#include "tests/support/LiteralSearch.hpp"

namespace tern::test {

class Twins {
 public:
  explicit Twins(const VenueLists& lists);

  // Nodes with their edges, links, places and blocks, in their order.
  std::string differenceOfGrids() const;
  // What the last search wrote into the nodes, and its open list.
  std::string differenceOfStates() const;

  // Searches with both, and compares the routes, the lines logged and the states.
  std::string search(std::int64_t startId, std::int64_t endId, std::int64_t accessLevel);
  std::string searchInArray(std::int64_t startId, const TernASGrid::Waypoints& ends,
                            std::int64_t accessLevel);

  // The nodes are named by their places in the list of nodes.
  void blockEdge(std::size_t a, std::size_t b, bool block);
  void blockEntry(std::size_t n, bool block);
  void blockExit(std::size_t n, bool block);
  std::string differenceOfBlocks(std::size_t a, std::size_t b) const;

  std::size_t nodeCount() const { return literal_.nodes.size(); }
  TernASGrid& grid() { return *search_.grid; }
  LiteralGrid& literal() { return literal_; }

 private:
  std::string differenceOfRoutes(const std::optional<TernRoute>& ours,
                                 const std::optional<LiteralRoute>& theirs);

  CapturedLog log_;
  TernASSearch search_;
  LiteralGrid literal_;
  LiteralSearch literalSearch_;
  // The library's nodes, which stay valid.
  std::vector<TernASNode> nodes_;
  std::size_t comparedLines_ = 0;
};

}  // namespace tern::test
