// Makes a route of the nodes that a search has found, cut where the map changes.
//
// Ownership: borrows the graph and the maps; both may be null. Threads: as readers of the maps.
// Fails: a route of one node is none, and is logged.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"
#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"
#include "TernCoreKit/wayfinding/detail/NodeSource.hpp"

namespace tern::inline v5 {

class TernMapCollection;

namespace detail {

class RouteMaker {
 public:
  // What the search knows of a node of the route, by its number there.
  using ProgressAt = std::function<NodeProgress(std::size_t)>;

  RouteMaker(const GridGraph* graph, const TernMapCollection* maps) : graph_(graph), maps_(maps) {}

  // Whether so many nodes make a route; logs when they do not.
  static bool isRoute(std::size_t nodes);

  // `route` runs from the start to the end, in positions of the source; `start`, when given, takes
  // the place of its first node, whose source it need not share.
  std::optional<TernRoute> make(const std::shared_ptr<NodeSource>& source,
                                std::span<const Position> route, const ProgressAt& progressAt,
                                std::span<const Distance> distances,
                                const TernASNode* start = nullptr) const;
  // The same of a source that holds nothing but the nodes of the route, in their order.
  std::optional<TernRoute> makeOfAll(const std::shared_ptr<NodeSource>& source,
                                     std::size_t count) const;

  // Map units times the map's millimetres a unit; 0 for an unknown map.
  float millimetres(float distance, std::int64_t mapId) const;

 private:
  struct Step {
    TernASNode node;
    std::int64_t mapId;
    TernPoint point;
  };

  static std::vector<Step> stepsAlong(const std::shared_ptr<NodeSource>& source,
                                      std::span<const Position> route, const TernASNode* start);
  TernPathPerFloor segmentOf(std::span<Step> steps, float score, Distance distance,
                             std::int64_t moverTypeId) const;

  const GridGraph* const graph_;
  const TernMapCollection* const maps_;
};

}  // namespace detail
}  // namespace tern
