// Searches detours round stretches of a route. What it closes is closed in its own view of the
// graph and nowhere else, so that several may go on at once, and one that is cut short leaves no
// trace.
//
// Ownership: shares the grid's nodes, borrows the maps. Threads: one; several side by side.
// Fails: what runs out of memory has changed nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"
#include "TernCoreKit/wayfinding/detail/GridNodes.hpp"
#include "TernCoreKit/wayfinding/detail/PlacedNode.hpp"

namespace tern::inline v5 {

class TernMapCollection;

namespace detail {

// What a search has found, as it was then.
struct Detour {
  std::vector<Position> nodes;  // of the route, from its start
  std::vector<Distance> distances;
  std::vector<NodeProgress> progress;
  Marks<EdgeIndex> blocked;
};

class DetourSearch {
 public:
  // `route` are the nodes the ways into which, from the neighbours that they name, can be closed.
  DetourSearch(std::shared_ptr<GridNodes> grid, std::span<const PlacedNode> route);

  // Closes the ways into so many nodes of the route.
  void close(std::size_t first, std::size_t count);
  // Whether there is a way left between the two waypoints, over links of that level.
  bool search(std::int64_t startId, std::int64_t endId, std::int64_t accessLevel);
  // What the detour that has been found costs, from the start of the route.
  float cost() const { return turn_.state().nodes[end_].score; }
  // Its nodes, from the start, and the length of the way to each.
  std::vector<Position> nodes() const { return turn_.routeTo(end_); }
  std::vector<Distance> distances(std::span<const Position> nodes) const {
    return turn_.distances(nodes);
  }
  // Keeps it, with the blocks of the moment. REQUIRES: the stretch has not been opened.
  Detour keep(std::vector<Position> nodes, std::vector<Distance> distances) const;
  // Makes a route of copies of its nodes. REQUIRES: two at least.
  TernRoute routeOf(const Detour& detour, const TernMapCollection* maps) const;
  // Opens the stretch again, whatever was closed on it before.
  void open();

  // Opens in the grid what has been opened here.
  void commit();

 private:
  std::span<const EdgeIndex> edgesInto(std::size_t first, std::size_t count) const {
    return std::span(ways_.edges).first(firstEdge_[first + count]).subspan(firstEdge_[first]);
  }
  std::span<const LinkIndex> linksInto(std::size_t first, std::size_t count) const {
    return std::span(ways_.links).first(firstLink_[first + count]).subspan(firstLink_[first]);
  }

  const std::shared_ptr<GridNodes> grid_;
  // The ways into all nodes of the route, and where those into each begin.
  Ways ways_;
  std::vector<std::size_t> firstEdge_;
  std::vector<std::size_t> firstLink_;
  SearchTurn turn_;
  Blocks blocks_;
  Position end_ = noPosition;
  std::size_t first_ = 0;
  std::size_t count_ = 0;
  std::vector<bool> isOpened_;  // by node of the route
};

}  // namespace detail
}  // namespace tern
