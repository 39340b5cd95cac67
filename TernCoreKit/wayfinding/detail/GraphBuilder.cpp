#include "TernCoreKit/wayfinding/detail/GraphBuilder.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <string>

#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/wayfinding/detail/ExitLink.hpp"

namespace tern::detail {

namespace {

constexpr std::uint32_t none = IdIndex::none;

// A path of n waypoints makes n * (n - 1) links, and every further waypoint of the same id makes
// its own. What all of them may make beyond a fixed multiple of the paths' ends: enough for one
// path that joins two thousand waypoints.
constexpr std::uint64_t spareLinks = std::uint64_t{1} << 22U;
constexpr std::uint64_t linksAnEnd = 16;

// A waypoint as the maps know it.
struct KnownWaypoint {
  Place place;
  std::int64_t recordId;
};

// A path as its ends see it.
struct PathFacts {
  std::uint32_t firstEnd;
  std::uint32_t kind;
  std::uint8_t direction;  // 1 and 2 say one way, anything else is 0
};

// An id that a path names: the first node and the first known waypoint that have it.
struct PathEnd {
  std::uint32_t node;
  std::uint32_t waypoint;
};

// Records lie all over the heap: each is asked for some while before it is read.
constexpr std::size_t fetchDistance = 12;

template <class Record>
void fetchRecord(const Record& record) {
  constexpr std::size_t line = 64;
  const auto* bytes = reinterpret_cast<const char*>(&record);
  for (std::size_t at = 0; at < sizeof(Record); at += line) __builtin_prefetch(bytes + at);
}

class Builder {
 public:
  explicit Builder(GridGraph& grid)
      : grid_(grid),
        records_(grid.records),
        nodeCount_(grid.records.waypoints.size()),
        nowhere_(grid.place(nullptr)) {}

  void build() {
    indexWaypoints();
    readPaths();
    if (records_.isForMultiVenue) joinVenues();
    boundLinks();
    listEdges();
    orderNodes();
    writeEdges();
    rankKinds();
    writeLinks();
  }

 private:
  std::span<const PathEnd> endsOf(std::uint32_t path) const {
    return std::span(ends_).subspan(paths_[path].firstEnd,
                                    paths_[path + 1].firstEnd - paths_[path].firstEnd);
  }
  std::span<const std::uint32_t> edgesOf(std::uint32_t node) const {
    return std::span(edges_).subspan(firstEdge_[node], firstEdge_[node + 1] - firstEdge_[node]);
  }
  // Whether any map has the waypoint.
  bool isKnown(std::int64_t id) const {
    return (knownAreNodes_ ? grid_.nodePlaces : knownPlaces_).find(id) != none;
  }
  // How many links a path gives to each of its waypoints at the most.
  std::uint32_t roomOver(std::uint32_t path) const {
    const bool isLinked = !std::ranges::binary_search(grid_.unlinkedPaths, path);
    return isLinked ? static_cast<std::uint32_t>(endsOf(path).size()) - 1 : 0;
  }
  // The node that a search finds under the node's id.
  std::uint32_t firstNodeOf(std::uint32_t node) const {
    return hasRepeats_ ? grid_.nodePlaces.find(nodeIds_[node]) : node;
  }

  void indexWaypoints();
  Place placeOf(const TernWaypoint& waypoint);
  void readPaths();
  void addPath(std::int64_t typeId, std::int64_t direction);
  void addEnd(std::int64_t id);
  std::uint32_t kindOf(std::int64_t typeId);
  void joinVenues();
  std::uint64_t linksOver(std::uint32_t path) const;
  void boundLinks();
  void boundRepeats();
  template <class Visit>
  void forEachEdge(Visit visit);
  void listEdges();
  bool isListedAlongPaths() const;
  void orderNodes();
  void orderBreadthFirst();
  void writeEdges();
  void rankKinds();
  void writeLinks();
  void writeLinksOf(std::uint32_t node);
  Link makeLink(const PathEnd& end, const LinkCost& cost, std::uint32_t rank) const;

  GridGraph& grid_;
  const GridRecords& records_;
  const std::size_t nodeCount_;
  const Place nowhere_;  // where a waypoint lies that no map knows

  std::vector<std::int64_t> nodeIds_;
  bool hasRepeats_ = false;
  std::vector<KnownWaypoint> known_;
  std::int64_t lastMapId_ = 0;
  const FloorIndex::Facts* lastFloor_ = nullptr;
  IdIndex knownPlaces_;
  // The maps know the same ids in the same order as the nodes have them, as they do in a venue.
  bool knownAreNodes_ = false;

  std::vector<PathEnd> ends_;
  std::vector<PathFacts> paths_;      // closed by one that only says where the last ends
  std::vector<std::uint32_t> exits_;  // by virtual path: the one node that has it as an edge
  std::vector<LinkKind> kinds_;
  std::vector<Passage> passages_;  // by kind
  std::map<std::int64_t, std::uint32_t> kindPlaces_;
  std::vector<std::uint32_t> rankOf_;  // by kind

  std::uint64_t linksLeft_ = 0;
  std::vector<std::uint32_t> repeats_;  // nodes that have the edges of an earlier one of their id

  std::vector<std::uint32_t> firstEdge_;  // by node, one more than there are
  std::vector<std::uint32_t> edges_;      // paths
  std::vector<std::uint32_t> linkRoom_;   // by node
};

void Builder::indexWaypoints() {
  std::vector<std::int64_t> knownIds;
  knownIds.reserve(nodeCount_);
  known_.reserve(nodeCount_);
  // In a venue the maps hold the very waypoints that the nodes are made of, in their order: then
  // one walk over the records serves both.
  knownAreNodes_ = true;
  for (const auto& map : records_.maps) {
    if (!map->waypoints) continue;
    const std::span<const RecordMap::Entry> entries = map->waypoints->items().entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      const RecordMap::Entry& entry = entries[i];
      if (i + fetchDistance < entries.size()) {
        fetchRecord(static_cast<const TernWaypoint&>(*entries[i + fetchDistance].record));
      }
      if (!entry.key.isInteger()) continue;
      const auto& waypoint = static_cast<const TernWaypoint&>(*entry.record);
      const std::int64_t id = waypoint.id.integer();
      const std::size_t place = known_.size();
      knownAreNodes_ = knownAreNodes_ && id == entry.key.integer() && place < nodeCount_ &&
                       records_.waypoints[place].get() == &waypoint;
      knownIds.push_back(entry.key.integer());
      known_.push_back({placeOf(waypoint), id});
    }
  }
  knownAreNodes_ = knownAreNodes_ && known_.size() == nodeCount_;
  grid_.mapsHoldTheNodes = knownAreNodes_;
  if (knownAreNodes_) {
    nodeIds_ = std::move(knownIds);
  } else {
    knownPlaces_ = IdIndex(knownIds);
    nodeIds_.reserve(nodeCount_);
    for (const auto& waypoint : records_.waypoints) nodeIds_.push_back(waypoint->id.integer());
  }
  grid_.nodePlaces = IdIndex(nodeIds_);
  hasRepeats_ = grid_.nodePlaces.distinct() < nodeCount_;
}

// Neighbouring waypoints mostly lie on one map: its floor is looked up once.
Place Builder::placeOf(const TernWaypoint& waypoint) {
  const std::int64_t mapId = waypoint.mapId.integer();
  if (lastFloor_ == nullptr || mapId != lastMapId_) {
    lastMapId_ = mapId;
    lastFloor_ = &grid_.floors.find(mapId);
  }
  return grid_.place(waypoint, *lastFloor_);
}

void Builder::addEnd(std::int64_t id) {
  const std::uint32_t node = grid_.nodePlaces.find(id);
  ends_.push_back({node, knownAreNodes_ ? node : knownPlaces_.find(id)});
}

void Builder::addPath(std::int64_t typeId, std::int64_t direction) {
  const bool isOneWay = direction == 1 || direction == 2;
  paths_.push_back({static_cast<std::uint32_t>(ends_.size()), kindOf(typeId),
                    static_cast<std::uint8_t>(isOneWay ? direction : 0)});
}

std::uint32_t Builder::kindOf(std::int64_t typeId) {
  if (!paths_.empty() && kinds_[paths_.back().kind].typeId == typeId) return paths_.back().kind;
  const auto [found, isNew] =
      kindPlaces_.try_emplace(typeId, static_cast<std::uint32_t>(kinds_.size()));
  if (isNew) {
    const auto type = grid_.pathTypeById(typeId);
    kinds_.push_back({typeId, type ? type->accessibility.integer() : 0});
    passages_.push_back(grid_.passage(typeId, 0));
  }
  return found->second;
}

void Builder::readPaths() {
  paths_.reserve(records_.paths.size() + 1);
  ends_.reserve(records_.paths.size() * 2);
  const TernASGrid::Paths& paths = records_.paths;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    if (i + fetchDistance < paths.size()) fetchRecord(*paths[i + fetchDistance]);
    const TernPath& path = *paths[i];
    addPath(path.pathTypeId.integer(), path.direction.integer());
    for (const Value& id : path.waypointIds.items()) addEnd(id.integer());
  }
  paths_.push_back({static_cast<std::uint32_t>(ends_.size()), 0, 0});
}

void Builder::joinVenues() {
  paths_.pop_back();
  for (std::uint32_t node = 0; node < nodeCount_; ++node) {
    const auto link = exitLinkOf(*records_.waypoints[node]);
    if (!link || !isKnown(link->waypointId)) continue;
    addPath(walkingType, 0);
    addEnd(nodeIds_[node]);
    addEnd(link->waypointId);
    grid_.virtualPaths.push_back({nodeIds_[node], link->waypointId});
    exits_.push_back(node);
  }
  paths_.push_back({static_cast<std::uint32_t>(ends_.size()), 0, 0});
}

// Every node that the path touches is linked to every one of its ends.
std::uint64_t Builder::linksOver(std::uint32_t path) const {
  const auto ends = endsOf(path);
  if (ends.size() <= linksAnEnd) return ends.size() * ends.size();
  std::vector<std::uint32_t> nodes;
  for (const PathEnd& end : ends) {
    if (end.node != none) nodes.push_back(end.node);
  }
  std::ranges::sort(nodes);
  nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
  return nodes.size() * ends.size();
}

void Builder::boundLinks() {
  linksLeft_ = spareLinks + linksAnEnd * ends_.size();
  for (std::uint32_t path = 0; path < records_.paths.size(); ++path) {
    const std::uint64_t links = linksOver(path);
    if (links <= linksLeft_) {
      linksLeft_ -= links;
      continue;
    }
    grid_.unlinkedPaths.push_back(path);
    logSdk("path " + records_.paths[path]->id.printed() +
           " joins too many waypoints to be walked on");
  }
}

// Visits every node with every path that touches it, in the order of the paths.
template <class Visit>
void Builder::forEachEdge(Visit visit) {
  std::vector<std::uint32_t> lastPath(nodeCount_, none);
  const auto real = static_cast<std::uint32_t>(records_.paths.size());
  for (std::uint32_t path = 0; path < real; ++path) {
    for (const PathEnd& end : endsOf(path)) {
      if (end.node == none || lastPath[end.node] == path) continue;
      lastPath[end.node] = path;
      visit(end.node, path);
    }
  }
}

// Chooses the waypoints of repeated ids that get the edges of the first one of their id, and counts
// their edges.
void Builder::boundRepeats() {
  std::vector<std::uint64_t> links(nodeCount_, 0);
  forEachEdge([&](std::uint32_t node, std::uint32_t path) { links[node] += endsOf(path).size(); });
  std::size_t without = 0;
  for (std::uint32_t node = 0; node < nodeCount_; ++node) {
    const std::uint32_t first = firstNodeOf(node);
    if (first == node) continue;
    if (links[first] > linksLeft_) {
      ++without;
      continue;
    }
    linksLeft_ -= links[first];
    firstEdge_[node + 1] = firstEdge_[first + 1];
    repeats_.push_back(node);
  }
  if (without == 0) return;
  logSdk(std::to_string(without) + " waypoints have ids of others too often to be walked on");
}

void Builder::listEdges() {
  firstEdge_.assign(nodeCount_ + 1, 0);
  linkRoom_.assign(nodeCount_, 0);
  forEachEdge([&](std::uint32_t node, std::uint32_t path) {
    ++firstEdge_[node + 1];
    linkRoom_[node] += roomOver(path);
  });
  if (hasRepeats_) boundRepeats();
  for (const std::uint32_t node : repeats_) linkRoom_[node] = linkRoom_[firstNodeOf(node)];
  for (const std::uint32_t exit : exits_) {
    ++firstEdge_[exit + 1];
    ++linkRoom_[exit];
  }
  std::partial_sum(firstEdge_.begin(), firstEdge_.end(), firstEdge_.begin());

  edges_.resize(firstEdge_.back());
  std::vector<std::uint32_t> next(firstEdge_.begin(), firstEdge_.end() - 1);
  forEachEdge([&](std::uint32_t node, std::uint32_t path) { edges_[next[node]++] = path; });
  for (const std::uint32_t node : repeats_) {
    const std::uint32_t first = firstNodeOf(node);
    for (std::uint32_t i = firstEdge_[first]; i < next[first]; ++i)
      edges_[next[node]++] = edges_[i];
  }
  for (std::size_t i = 0; i < exits_.size(); ++i) {
    edges_[next[exits_[i]]++] = static_cast<std::uint32_t>(records_.paths.size() + i);
  }
}

// Whether most paths join waypoints that stand near each other in the list: near enough for their
// states to share the nearest cache.
bool Builder::isListedAlongPaths() const {
  constexpr std::uint32_t nearby = 1024;
  std::size_t far = 0;
  for (std::size_t i = 1; i < ends_.size(); ++i) {
    const std::uint32_t a = ends_[i - 1].node;
    const std::uint32_t b = ends_[i].node;
    // Where one path ends and the next begins says much the same.
    far += static_cast<std::size_t>(a != none && b != none && (a > b ? a - b : b - a) > nearby);
  }
  return far * 8 <= ends_.size();
}

// In the order of the list where that follows the walkways, else breadth first: nodes which a
// search meets together are to lie together.
void Builder::orderNodes() {
  if (isListedAlongPaths()) {
    grid_.positionOf.resize(nodeCount_);
    std::iota(grid_.positionOf.begin(), grid_.positionOf.end(), 0U);
    grid_.placeOf = grid_.positionOf;
  } else {
    orderBreadthFirst();
  }
}

void Builder::orderBreadthFirst() {
  grid_.positionOf.assign(nodeCount_, noPosition);
  grid_.placeOf.reserve(nodeCount_);
  std::vector<bool> walked(paths_.size(), false);
  const auto take = [&](std::uint32_t node) {
    if (node == none || grid_.positionOf[node] != noPosition) return;
    grid_.positionOf[node] = static_cast<Position>(grid_.placeOf.size());
    grid_.placeOf.push_back(node);
  };
  std::size_t expanded = 0;
  for (std::uint32_t seed = 0; seed < nodeCount_; ++seed) {
    take(seed);
    for (; expanded < grid_.placeOf.size(); ++expanded) {
      for (const std::uint32_t path : edgesOf(grid_.placeOf[expanded])) {
        if (walked[path]) continue;
        walked[path] = true;
        for (const PathEnd& end : endsOf(path)) take(end.node);
      }
    }
  }
}

void Builder::writeEdges() {
  grid_.firstEdge.reserve(nodeCount_ + 1);
  grid_.edgeRefs.reserve(edges_.size());
  for (const std::uint32_t node : grid_.placeOf) {
    grid_.firstEdge.push_back(static_cast<std::uint32_t>(grid_.edgeRefs.size()));
    for (const std::uint32_t path : edgesOf(node)) grid_.edgeRefs.push_back({path});
  }
  grid_.firstEdge.push_back(static_cast<std::uint32_t>(grid_.edgeRefs.size()));
}

void Builder::rankKinds() {
  std::vector<std::uint32_t> order(kinds_.size());
  std::iota(order.begin(), order.end(), 0U);
  std::ranges::stable_sort(order, {},
                           [&](std::uint32_t kind) { return kinds_[kind].accessibility; });
  rankOf_.resize(kinds_.size());
  for (const std::uint32_t kind : order) {
    rankOf_[kind] = static_cast<std::uint32_t>(grid_.kinds.size());
    grid_.kinds.push_back(kinds_[kind]);
  }
}

// Walks over the nodes in the order of their records, so that what it reads lies together; only
// what it writes lies in the order of the positions.
void Builder::writeLinks() {
  std::uint32_t room = 0;
  grid_.graph.states.resize(nodeCount_);
  for (std::size_t position = 0; position < nodeCount_; ++position) {
    grid_.graph.states[position].firstLink = room;
    room += linkRoom_[grid_.placeOf[position]];
  }
  grid_.graph.links.resize(room);
  for (std::uint32_t node = 0; node < nodeCount_; ++node) writeLinksOf(node);
}

void Builder::writeLinksOf(std::uint32_t node) {
  const std::uint32_t self = firstNodeOf(node);
  const std::uint32_t known = knownAreNodes_ ? self : knownPlaces_.find(nodeIds_[node]);
  const Place from = known != none ? known_[known].place : nowhere_;
  NodeState& state = grid_.graph.states[grid_.positionOf[node]];
  state.endLink = state.firstLink;
  for (const std::uint32_t path : edgesOf(node)) {
    if (std::ranges::binary_search(grid_.unlinkedPaths, path)) continue;
    Passage over = passages_[paths_[path].kind];
    over.direction = paths_[path].direction;
    for (const PathEnd& end : endsOf(path)) {
      if (end.node == self) continue;
      const Place& to = end.waypoint != none ? known_[end.waypoint].place : nowhere_;
      if (const auto cost = linkCost(from, to, over)) {
        const bool isPlain = cost->cost >= 0 && std::isfinite(cost->cost);
        grid_.graph.costsArePlain = grid_.graph.costsArePlain && isPlain;
        grid_.graph.links[state.endLink++] = makeLink(end, *cost, rankOf_[paths_[path].kind]);
      }
    }
  }
  grid_.linkCount += state.endLink - state.firstLink;
}

Link Builder::makeLink(const PathEnd& end, const LinkCost& cost, std::uint32_t rank) const {
  std::uint32_t target = end.node;
  if (!knownAreNodes_ || end.waypoint == none) {
    // A waypoint that no map knows has no id, which reads as 0.
    target = grid_.nodePlaces.find(end.waypoint != none ? known_[end.waypoint].recordId : 0);
  }
  if (target == none) return {noPosition, cost.cost, cost.distance, Link::shut};
  return {grid_.positionOf[target], cost.cost, cost.distance, rank};
}

}  // namespace

void buildGraph(GridGraph& grid) { Builder(grid).build(); }

}  // namespace tern::detail
