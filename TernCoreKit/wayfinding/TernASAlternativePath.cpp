#include "TernCoreKit/wayfinding/TernASAlternativePath.hpp"

#include <cmath>
#include <utility>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/detail/common/ArcTangent.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "TernCoreKit/wayfinding/detail/BranchProbe.hpp"
#include "TernCoreKit/wayfinding/detail/DetourSearch.hpp"
#include "TernCoreKit/wayfinding/detail/RouteMaker.hpp"

namespace tern::inline v5 {

namespace {

constexpr double penaltyOfATurn = 0.001;

TernRoute copyOf(const TernRoute& route) {
  TernRoute copy;
  copy.reserve(route.size());
  for (const TernPathPerFloor& segment : route) copy.push_back(segment.copyWithZone());
  return copy;
}

float lengthOf(const TernRoute& route) { return route.empty() ? 0 : route.back().pixelDistance; }

double numberOr(const Value* value, double missing) {
  return value != nullptr && value->isNumber() ? value->number() : missing;
}

struct Spot {
  float x;
  float y;
};

Spot spotOf(const TernASNode& node) {
  return {static_cast<float>(node.x()), static_cast<float>(node.y())};
}

double headingOf(Spot a, Spot b) {
  constexpr double degreesInARadian = 57.29577951308232;
  const double heading = detail::arcTangent(b.y - a.y, b.x - a.x) * degreesInARadian;
  return heading > 0 ? heading : heading + 360;
}

bool isBetween(double value, double low, double high) { return value > low && value < high; }

// A sharp turn counts twice, as a reversal and as a turn.
int turnsAt(double change) {
  const double size = std::abs(change);
  return static_cast<int>(isBetween(size, 135, 225)) +
         static_cast<int>(isBetween(size, 20, 160) || isBetween(size, 200, 340));
}

// Counts the turns of a way, point after point.
class Turns {
 public:
  int count() const { return count_; }

  void add(Spot spot) {
    const double heading = headingOf(last_, spot);
    if (passed_ >= 2) count_ += turnsAt(heading - heading_);
    heading_ = heading;
    last_ = spot;
    ++passed_;
  }
  // What comes next stands on another floor: there is no turn on the way there.
  void changeFloor() { passed_ = 0; }

 private:
  int count_ = 0;
  std::size_t passed_ = 0;  // points on this floor
  Spot last_{};
  double heading_ = 0;
};

float withPenalty(float cost, const Turns& turns) {
  return static_cast<float>(cost + turns.count() * penaltyOfATurn);
}

// A detour before it is made a route.
struct Shape {
  std::size_t segments = 1;
  Turns turns;
};

Shape shapeOf(std::span<const detail::Position> nodes, const detail::GridGraph& graph) {
  Shape shape;
  std::optional<std::int64_t> mapId;
  for (const detail::Position node : nodes) {
    const detail::NodeFacts facts = graph.nodeFacts(node);
    if (mapId && facts.mapId != *mapId) {
      ++shape.segments;
      shape.turns.changeFloor();
    }
    mapId = facts.mapId;
    shape.turns.add({static_cast<float>(facts.x), static_cast<float>(facts.y)});
  }
  return shape;
}

// How many points of so many are closed behind a decision point; none where the share makes no
// number of them.
std::optional<std::size_t> stretchLength(std::size_t points, double share) {
  const double wanted = (1 - share) * (static_cast<double>(points) - 2);
  const float length = std::round(static_cast<float>(wanted));
  if (!(length >= 0 && length < static_cast<float>(points))) return std::nullopt;
  return static_cast<std::size_t>(length);
}

}  // namespace

void TernASAlternativePath::wayfind(const std::shared_ptr<TernWaypoint>& from,
                                    const std::shared_ptr<TernWaypoint>& to, const Value& options,
                                    std::int64_t accessibility, const Completion& completion) {
  waypointStart = from;
  waypointEnd = to;
  accessible = accessibility;
  readOptions(options);
  std::optional<TernRoute> shortest;
  if (hasEnds()) shortest = search().route(from->id.integer(), to->id.integer(), accessible);
  std::optional<Routes> alternatives;
  if (shortest) {
    optimalPath = copyOf(*shortest);
    alternatives = pathMatchThreshold == 1.0 ? Routes{*optimalPath} : getAlternativePath();
  }
  // Without a route, not the one of a request before. Nothing is copied, which could fail only now.
  const std::optional<TernRoute> none;
  if (completion) completion(shortest ? optimalPath : none, alternatives);
}

void TernASAlternativePath::readOptions(const Value& options) {
  if (!options.isMap()) return;
  pathMatchThreshold = numberOr(options.find("optimalPathMatchRatio"), 0.6);
  distanceThreshold = numberOr(options.find("optimalPathDistanceRatio"), 2);
}

TernASSearch TernASAlternativePath::search() const {
  TernASSearch search;
  search.grid = grid;
  search.maps = maps;
  return search;
}

std::optional<TernRoute> TernASAlternativePath::getShortestPath() const {
  if (!hasEnds()) return std::nullopt;
  return search().search(waypointStart->id.integer(), waypointEnd->id.integer(), accessible);
}

std::optional<TernASAlternativePath::Routes> TernASAlternativePath::getAlternativePath() {
  if (!optimalPath) return std::nullopt;
  std::vector<TernASNode> points;
  for (const TernPathPerFloor& segment : *optimalPath) {
    points.insert(points.end(), segment.points.begin(), segment.points.end());
  }
  if (points.size() < 3 || pathMatchThreshold > 1.0) return std::nullopt;
  return blockWaypoints(points, getDecisionNodes(points));
}

std::vector<std::size_t> TernASAlternativePath::getDecisionNodes(
    const std::vector<TernASNode>& points) {
  if (grid == nullptr || points.empty()) return {};
  destinationNode = points.back();
  const detail::BranchProbe probe(grid->nodes_->graph, *destinationNode, depthOfDecisionWaypoint);
  return probe.decisionsAlong(placed(points));
}

bool TernASAlternativePath::validateNode(const TernASNode& node,
                                         const std::optional<TernASNode>& parentNode,
                                         int level) const {
  if (grid == nullptr) return false;
  const detail::BranchProbe probe(grid->nodes_->graph, destinationNode, depthOfDecisionWaypoint);
  const auto parent = parentNode ? std::optional(parentNode->nodeId()) : std::nullopt;
  return probe.goesOn(grid->placed(node), parent, level);
}

std::vector<detail::PlacedNode> TernASAlternativePath::placed(
    std::span<const TernASNode> nodes) const {
  std::vector<detail::PlacedNode> places;
  places.reserve(nodes.size());
  for (const TernASNode& node : nodes) places.push_back(grid->placed(node));
  return places;
}

std::optional<TernASAlternativePath::Routes> TernASAlternativePath::blockWaypoints(
    const std::vector<TernASNode>& points, const std::vector<std::size_t>& decisionIndexes) {
  const auto length = stretchLength(points.size(), pathMatchThreshold);
  if (!length) return best();
  std::vector<std::size_t> behind;
  for (const std::size_t decision : decisionIndexes) behind.push_back(decision + 1);
  return tryDetours(points, behind, *length);
}

std::optional<TernASAlternativePath::Routes> TernASAlternativePath::best() const {
  if (!bestAlternativePath) return std::nullopt;
  return Routes{*bestAlternativePath};
}

void TernASAlternativePath::blockandgeneratePath(std::span<const TernASNode> nodes) {
  const std::size_t first[] = {0};
  tryDetours(nodes, first, nodes.size());
}

// Made a route when nothing better can come any more.
struct TernASAlternativePath::Best {
  detail::Detour detour;
  float cost;
};

std::optional<TernASAlternativePath::Routes> TernASAlternativePath::tryDetours(
    std::span<const TernASNode> nodes, std::span<const std::size_t> firsts, std::size_t length) {
  if (grid == nullptr) return best();
  detail::DetourSearch detours(grid->nodes_, placed(nodes));
  std::optional<Best> better;
  for (const std::size_t first : firsts) {
    if (first + length > nodes.size()) continue;
    detours.close(first, length);
    const bool isFound = hasEnds() && detours.search(waypointStart->id.integer(),
                                                     waypointEnd->id.integer(), accessible);
    if (isFound) keepIfBest(detours, better);
    detours.open();
  }
  if (better) {
    TernRoute route = detours.routeOf(better->detour, maps.get());
    route.back().cost = better->cost;
    bestAlternativePath = std::move(route);
  }
  auto found = best();
  detours.commit();
  return found;
}

void TernASAlternativePath::keepIfBest(const detail::DetourSearch& detours,
                                       std::optional<Best>& best) const {
  // Its turns can only make it dearer.
  if (!isBetter(detours.cost(), best)) return;
  std::vector<detail::Position> nodes = detours.nodes();
  if (!detail::RouteMaker::isRoute(nodes.size())) return;
  std::vector<detail::Distance> distances = detours.distances(nodes);
  if (!isShortEnough(*distances.back())) return;
  const Shape shape = shapeOf(nodes, grid->nodes_->graph);
  if (leavesItsFloor(shape.segments)) return;
  const float cost = withPenalty(detours.cost(), shape.turns);
  if (isBetter(cost, best)) best = {detours.keep(std::move(nodes), std::move(distances)), cost};
}

bool TernASAlternativePath::isBetter(float cost, const std::optional<Best>& best) const {
  if (best) return cost < best->cost;
  return !bestAlternativePath || cost < bestAlternativePath->back().cost;
}

std::optional<TernRoute> TernASAlternativePath::generateAlternativePath() const {
  auto candidate = getShortestPath();
  if (!candidate) return std::nullopt;
  if (leavesItsFloor(candidate->size()) || !isAlternativePathCandidate(*candidate)) {
    return std::nullopt;
  }
  calculateTurns(*candidate);
  return candidate;
}

bool TernASAlternativePath::leavesItsFloor(std::size_t segments) const {
  return optimalPath && optimalPath->size() == 1 && segments > 1;
}

bool TernASAlternativePath::isAlternativePathCandidate(const TernRoute& route) const {
  return isShortEnough(lengthOf(route));
}

bool TernASAlternativePath::isShortEnough(float length) const {
  const float ratio = length / (optimalPath ? lengthOf(*optimalPath) : 0);
  return !(ratio > distanceThreshold);
}

void TernASAlternativePath::calculateTurns(TernRoute& route) {
  if (route.empty()) return;
  Turns turns;
  for (const TernPathPerFloor& segment : route) {
    turns.changeFloor();
    for (const TernASNode& node : segment.points) turns.add(spotOf(node));
  }
  route.back().cost = withPenalty(route.back().cost, turns);
}

double TernASAlternativePath::getAngleFrom(const std::optional<TernASNode>& a,
                                           const std::optional<TernASNode>& b) {
  return a && b ? headingOf(spotOf(*a), spotOf(*b)) : 0;
}

}  // namespace tern
