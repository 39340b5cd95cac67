#include "tests/support/Twins.hpp"

#include <bit>
#include <cmath>
#include <concepts>
#include <sstream>
#include <type_traits>

#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "tests/support/RandomVenue.hpp"

namespace tern::test {

namespace {

bool same(float a, float b) {
  return (std::isnan(a) && std::isnan(b)) ||
         std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

bool same(double a, double b) {
  return (std::isnan(a) && std::isnan(b)) ||
         std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool same(const std::optional<float>& a, const std::optional<float>& b) {
  return a.has_value() == b.has_value() && same(a.value_or(0), b.value_or(0));
}

template <class T>
bool same(const T& a, const T& b) {
  return a == b;
}

template <class T>
requires std::is_arithmetic_v<T> std::string shown(T value) {
  std::ostringstream text;
  text.precision(17);
  text << value;
  return text.str();
}
std::string shown(const std::optional<float>& value) { return value ? shown(*value) : "none"; }
std::string shown(const std::string& value) { return value; }
std::string shown(const std::shared_ptr<TernPathType>& value) {
  return value != nullptr ? "type " + value->id.printed() : "no type";
}
template <std::same_as<Value> T>
std::string shown(const T& value) {
  return value.isAbsent() ? "absent" : value.printed();
}
template <class T>
std::string shown(const std::vector<T>& values) {
  std::string text;
  for (const T& value : values) text += "<" + shown(value) + ">";
  return text;
}

// Notes the first pair that is not the same.
class Comparison {
 public:
  explicit Comparison(std::string where) : where_(std::move(where)) {}

  template <class T>
  Comparison& of(const char* what, const T& ours, const T& theirs) {
    if (found_.empty() && !same(ours, theirs)) {
      found_ = where_ + " " + what + ": " + shown(ours) + ", literally " + shown(theirs);
    }
    return *this;
  }
  Comparison& and_(const std::string& difference) {
    if (found_.empty() && !difference.empty()) found_ = where_ + " " + difference;
    return *this;
  }
  const std::string& found() const { return found_; }

 private:
  std::string where_;
  std::string found_;
};

std::string named(const char* what, std::size_t place) {
  return what + std::string(" ") + std::to_string(place);
}

// Compares two lists item by item.
template <class Ours, class Theirs, class Compare>
std::string differenceOfLists(const char* what, const Ours& ours, const Theirs& theirs,
                              Compare compare) {
  Comparison all(what);
  all.of("count", ours.size(), theirs.size());
  if (!all.found().empty()) return all.found();
  for (std::size_t i = 0; i < ours.size() && all.found().empty(); ++i) {
    Comparison one(std::to_string(i));
    compare(one, ours[i], theirs[i]);
    all.and_(one.found());
  }
  return all.found();
}

void compareEdges(Comparison& edge, const TernASEdge& ours, const TernASEdge& theirs) {
  edge.of("edgeId", ours.edgeId, theirs.edgeId)
      .of("nodes", ours.nodes, theirs.nodes)
      .of("type", ours.type, theirs.type)
      .of("cost", ours.cost, theirs.cost)
      .of("acc", ours.acc, theirs.acc)
      .of("speed", ours.speed, theirs.speed)
      .of("direction", ours.direction, theirs.direction)
      .of("blocked", ours.blocked, theirs.blocked);
}

void compareLinks(Comparison& link, const TernNeighbor& ours, const TernNeighbor& theirs) {
  link.of("neighborId", ours.neighborId, theirs.neighborId)
      .of("cost", ours.cost, theirs.cost)
      .of("acc", ours.acc, theirs.acc)
      .of("edgeId", ours.edgeId, theirs.edgeId)
      .of("edgeTypeId", ours.edgeTypeId, theirs.edgeTypeId)
      .of("distance", ours.distance, theirs.distance)
      .of("x", ours.x, theirs.x)
      .of("y", ours.y, theirs.y)
      .of("z", ours.z, theirs.z);
}

std::string differenceOfNodes(std::size_t place, const TernASNode& ours,
                              const LiteralNode& theirs) {
  return Comparison(named("node", place))
      .of("nodeId", ours.nodeId(), theirs.nodeId)
      .of("x", ours.x(), theirs.x)
      .of("y", ours.y(), theirs.y)
      .of("z", ours.z(), theirs.z)
      .of("mapId", ours.mapId(), theirs.mapId)
      .and_(differenceOfLists("edge", ours.edges(), theirs.edges, compareEdges))
      .and_(differenceOfLists("link", ours.neighbors(), theirs.neighbors, compareLinks))
      .found();
}

// A node's place, so that two nodes of one id are told apart; -1 for none.
std::int64_t placeOf(const std::vector<TernASNode>& nodes, const std::optional<TernASNode>& node) {
  for (std::size_t i = 0; node && i < nodes.size(); ++i) {
    if (nodes[i] == *node) return static_cast<std::int64_t>(i);
  }
  return -1;
}

std::int64_t placeOf(const std::vector<LiteralNode>& nodes, const LiteralNode* node) {
  return node != nullptr ? node - nodes.data() : -1;
}

}  // namespace

Twins::Twins(const VenueLists& lists)
    : literal_(lists), literalSearch_(literal_, collect(lists.maps)) {
  search_.grid = lists.makeGrid();
  search_.maps = collect(lists.maps);
  nodes_ = search_.grid->nodes();
}

std::string Twins::differenceOfGrids() const {
  Comparison all("grid");
  all.of("nodes", nodes_.size(), literal_.nodes.size());
  for (std::size_t i = 0; i < nodes_.size() && all.found().empty(); ++i) {
    all.and_(differenceOfNodes(i, nodes_[i], literal_.nodes[i]));
  }
  return all.found();
}

std::string Twins::differenceOfStates() const {
  Comparison all("state");
  for (std::size_t i = 0; i < nodes_.size() && all.found().empty(); ++i) {
    const TernASNode& ours = nodes_[i];
    const LiteralNode& theirs = literal_.nodes[i];
    all.and_(
        Comparison(named("node", i))
            .of("visited", ours.visited(), theirs.visited)
            .of("closed", ours.closed(), theirs.closed)
            .of("f", ours.f(), theirs.f)
            .of("g", ours.g(), theirs.g)
            .of("h", ours.h(), 0.0F)
            .of("distance", ours.distance(), theirs.distance)
            .of("parent", placeOf(nodes_, ours.parent()), placeOf(literal_.nodes, theirs.parent))
            .of("usedEdgeTypeId", ours.usedEdgeTypeId(), theirs.usedEdgeTypeId)
            .found());
  }
  return all
      .and_(differenceOfLists(
          "heap", search_.openStartHeap(), literalSearch_.openStartHeap().nodes(),
          [&](Comparison& entry, const TernASNode& ours, const LiteralNode* theirs) {
            entry.of("node", placeOf(nodes_, ours), placeOf(literal_.nodes, theirs));
          }))
      .found();
}

std::string Twins::differenceOfRoutes(const std::optional<TernRoute>& ours,
                                      const std::optional<LiteralRoute>& theirs) {
  Comparison all("route");
  all.of("found", ours.has_value(), theirs.has_value());
  const auto& expectedLines = literalSearch_.log();
  all.of(
      "log", log_.take(),
      std::vector<std::string>(expectedLines.begin() + static_cast<std::ptrdiff_t>(comparedLines_),
                               expectedLines.end()));
  comparedLines_ = expectedLines.size();
  if (!ours || !theirs) return all.found();
  const auto compareSegments = [&](Comparison& one, const TernPathPerFloor& our,
                                   const LiteralSegment& their) {
    one.of("cost", our.cost, their.cost)
        .of("mapId", our.mapId, their.mapId)
        .of("mover", our.mover, their.mover)
        .of("pixelDistance", our.pixelDistance, their.pixelDistance)
        .of("mmDistance", our.mmDistance, their.mmDistance)
        .of("accessibility", our.accessibility, std::int64_t{0})
        .of("obstacles", our.obstacles.isAbsent(), true)
        .of("waypoints", our.waypoints.empty(), true)
        .and_(differenceOfLists(
            "point", our.points, their.points,
            [&](Comparison& point, const TernASNode& node, const LiteralNode* literal) {
              point.of("node", placeOf(nodes_, node), placeOf(literal_.nodes, literal));
            }))
        .and_(differenceOfLists("map point", our.mapPoints, their.mapPoints,
                                [](Comparison& point, const TernPoint& a, const TernPoint& b) {
                                  point.of("x", a.x, b.x).of("y", a.y, b.y).of("z", a.z, b.z);
                                }));
  };
  return all.and_(differenceOfLists("segment", *ours, *theirs, compareSegments)).found();
}

std::string Twins::search(std::int64_t startId, std::int64_t endId, std::int64_t accessLevel) {
  const auto ours = search_.search(startId, endId, accessLevel);
  const auto theirs = literalSearch_.search(startId, endId, accessLevel);
  return Comparison("search")
      .and_(differenceOfRoutes(ours, theirs))
      .and_(differenceOfStates())
      .found();
}

std::string Twins::searchInArray(std::int64_t startId, const TernASGrid::Waypoints& ends,
                                 std::int64_t accessLevel) {
  const auto ours = search_.searchInArray(startId, ends, accessLevel);
  const auto theirs = literalSearch_.searchInArray(startId, ends, accessLevel);
  return Comparison("searchInArray")
      .and_(differenceOfRoutes(ours, theirs))
      .and_(differenceOfStates())
      .found();
}

void Twins::blockEdge(std::size_t a, std::size_t b, bool block) {
  grid().shouldBlockEdgeBetweenNode(nodes_[a], nodes_[b], block);
  literal_.shouldBlockEdgeBetweenNode(literal_.nodes[a], literal_.nodes[b], block);
}

void Twins::blockEntry(std::size_t n, bool block) {
  grid().shouldBlockEntryToNode(nodes_[n], block);
  literal_.shouldBlockEntryToNode(literal_.nodes[n], block);
}

void Twins::blockExit(std::size_t n, bool block) {
  grid().shouldBlockExitFromNode(nodes_[n], block);
  literal_.shouldBlockExitFromNode(literal_.nodes[n], block);
}

std::string Twins::differenceOfBlocks(std::size_t a, std::size_t b) const {
  return Comparison("from node " + std::to_string(a) + " to " + std::to_string(b))
      .of("isBlocked", search_.grid->isEdgeBlockedBetweenNode(nodes_[a], nodes_[b]),
          literal_.isEdgeBlockedBetweenNode(literal_.nodes[a], literal_.nodes[b]))
      .found();
}

}  // namespace tern::test
