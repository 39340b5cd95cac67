#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/wayfinding/TernASNode.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::inline v5 {

class TernASGrid;
class TernMapCollection;
struct TernWaypoint;

class TernASSearch;

namespace detail {
class DetourSearch;
struct PlacedNode;
}  // namespace detail

/// Finds the best route and one sensible alternative beside it.
///
/// Where a side branch leaves the best route, the stretch behind that decision point is closed, a
/// detour is searched, and the stretch is opened again. The cheapest detour stays that is not much
/// longer than the best route and does not leave its floor where the best route does not. A
/// detour's turns add a little to its cost, so that of two equal ones the plainer wins.
///
/// What a request closes is closed for itself alone. Ways that were blocked in the grid before, on
/// a stretch that is tried, are open afterwards: all of them when the request is over, and none
/// when it runs out of memory.
///
/// A finder serves one request: the best detour is kept. A request costs one search and another for
/// each decision point.
///
/// Ownership: shares the grid, the maps and the waypoints; the routes it hands out are copies that
/// no later search changes.
/// Threads: one at a time; any number of finders may use one grid at once.
/// Fails: no route is none; the searches log, see TernASSearch.
///
///     TernASAlternativePath finder;
///     finder.grid = venue->globalASGrid();
///     finder.maps = venue->maps;
///     finder.wayfind(start, to, Value::map({{"optimalPathMatchRatio", 0.5}}), 100,
///                    [](const auto& optimal, const auto& alternatives) { ... });
class TERN_API TernASAlternativePath {
 public:
  /// Alternatives.
  using Routes = std::vector<TernRoute>;
  /// Takes the best route and the alternatives to it, or neither.
  using Completion = std::function<void(const std::optional<TernRoute>& optimal,
                                        const std::optional<Routes>& alternatives)>;

  /// Where the request begins.
  std::shared_ptr<TernWaypoint> waypointStart;
  /// Where the request ends.
  std::shared_ptr<TernWaypoint> waypointEnd;
  /// The accessibility level of every search.
  std::int64_t accessible = 0;
  /// The best detour so far.
  std::optional<TernRoute> bestAlternativePath;
  /// The best route.
  std::optional<TernRoute> optimalPath;
  /// The last node of the best route.
  std::optional<TernASNode> destinationNode;
  /// How many links deep a side branch must reach to make a decision point.
  /// REQUIRES: a small number; every link is a call deeper.
  int depthOfDecisionWaypoint = 3;
  /// The graph to search.
  std::shared_ptr<TernASGrid> grid;
  /// The share of the best route that an alternative may have in common with it; the rest is the
  /// length of the stretches that are closed. 1 offers the best route itself, more offers nothing.
  double pathMatchThreshold = 0.6;
  /// How many times as long as the best route an alternative may be.
  double distanceThreshold = 2;
  /// The venue's maps, for their scales.
  std::shared_ptr<TernMapCollection> maps;

  /// Options: "optimalPathMatchRatio" (0.6), "optimalPathDistanceRatio" (2); what is no number
  /// counts as missing. Options that are no map leave the thresholds as they are. The completion is
  /// called once, before the call returns.
  void wayfind(const std::shared_ptr<TernWaypoint>& from, const std::shared_ptr<TernWaypoint>& to,
               const Value& options, std::int64_t accessibility, const Completion& completion);

  /// The steps of a request follow, over the grid as it is now. This is the best route.
  std::optional<TernRoute> getShortestPath() const;
  /// The best detour round the best route.
  std::optional<Routes> getAlternativePath();
  /// Where a branch leaves the route: numbers in the list of points, by the links that these points
  /// have. The last point becomes `destinationNode`.
  std::vector<std::size_t> getDecisionNodes(const std::vector<TernASNode>& points);
  /// Whether a branch that reaches `node` from `parentNode` goes on to the wanted depth, or to the
  /// destination. It starts on the links of the node as it is given; what these lead to is looked
  /// up in the grid. Blocks and accessibility do not count.
  bool validateNode(const TernASNode& node, const std::optional<TernASNode>& parentNode,
                    int level) const;
  /// Tries a detour behind each of the decision points.
  std::optional<Routes> blockWaypoints(const std::vector<TernASNode>& points,
                                       const std::vector<std::size_t>& decisionIndexes);
  /// Closes the ways into the nodes from the neighbours that they have, keeps the detour if it is
  /// the best so far, opens them again.
  void blockandgeneratePath(std::span<const TernASNode> nodes);
  /// The best route, when it makes an alternative to `optimalPath`.
  std::optional<TernRoute> generateAlternativePath() const;
  /// Whether the route is not much longer than `optimalPath`.
  bool isAlternativePathCandidate(const TernRoute& route) const;
  /// Adds the penalty for turns to the cost of the route's last segment.
  static void calculateTurns(TernRoute& route);
  /// Degrees, above 0 and up to 360: due east is 360, and 90 lies where y grows. 0 without a node.
  static double getAngleFrom(const std::optional<TernASNode>& a,
                             const std::optional<TernASNode>& b);

 private:
  void readOptions(const Value& options);
  bool hasEnds() const { return waypointStart != nullptr && waypointEnd != nullptr; }
  TernASSearch search() const;
  TERN_INTERNAL std::vector<detail::PlacedNode> placed(std::span<const TernASNode> nodes) const;
  // Closes so many of the nodes from each of the given ones on, one stretch after the other. The
  // best detour so far, which is made before the grid's blocks are lifted: what comes then does not
  // fail.
  std::optional<Routes> tryDetours(std::span<const TernASNode> nodes,
                                   std::span<const std::size_t> firsts, std::size_t length);
  std::optional<Routes> best() const;
  struct Best;
  TERN_INTERNAL void keepIfBest(const detail::DetourSearch& detours,
                                std::optional<Best>& best) const;
  // Whether the best detour so far, from here or from before, costs more.
  bool isBetter(float cost, const std::optional<Best>& best) const;
  // Whether so many segments lead off the one floor of the best route.
  bool leavesItsFloor(std::size_t segments) const;
  bool isShortEnough(float length) const;
};

}  // namespace tern
