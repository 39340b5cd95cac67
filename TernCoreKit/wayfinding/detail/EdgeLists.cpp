#include "TernCoreKit/wayfinding/detail/EdgeLists.hpp"

#include <algorithm>
#include <string>

#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/platform/Log.hpp"

namespace tern::inline v5::detail {

namespace {

// What all links may be beyond a fixed multiple of the paths' ends: enough for one path that joins
// two thousand waypoints.
constexpr std::uint64_t spareLinks = std::uint64_t{1} << 22U;
constexpr std::uint64_t linksAnEnd = 16;

// Every waypoint that the path touches is linked to every one of its ends.
std::uint64_t linksOver(PathIndex path, const VenueFacts& facts) {
  const auto ends = facts.paths.endsOf(path);
  if (ends.size() <= linksAnEnd) return ends.size() * ends.size();
  std::vector<PathEnd> waypoints;
  std::ranges::copy_if(ends, std::back_inserter(waypoints),
                       [&](PathEnd end) { return facts.isWaypoint(end); });
  std::ranges::sort(waypoints);
  waypoints.erase(std::unique(waypoints.begin(), waypoints.end()), waypoints.end());
  return waypoints.size() * ends.size();
}

// Visits every waypoint with every path that touches it, in the order of the paths.
template <class Visit>
void forEachEdge(const VenueFacts& facts, Visit visit) {
  Indexed<WaypointIndex, PathIndex> last(facts.waypoints.count(), none<PathIndex>);
  for (PathIndex path{0}; numberOf(path) < facts.paths.recordCount; ++path) {
    for (const PathEnd end : facts.paths.endsOf(path)) {
      const WaypointIndex waypoint{numberOf(end)};
      if (!facts.isWaypoint(end) || last[waypoint] == path) continue;
      last[waypoint] = path;
      visit(waypoint, path);
    }
  }
}

void boundPaths(const VenueFacts& facts, const TernASGrid::Paths& records, std::uint64_t& left,
                LinkBounds& bounds) {
  for (PathIndex path{0}; numberOf(path) < facts.paths.recordCount; ++path) {
    const std::uint64_t links = linksOver(path, facts);
    if (links <= left) {
      left -= links;
      continue;
    }
    bounds.unlinked.push_back(path);
    logSdk("path " + records[numberOf(path)]->id.printed() +
           " joins too many waypoints to be walked on");
  }
}

void boundRepeats(const VenueFacts& facts, std::uint64_t& left, LinkBounds& bounds) {
  Indexed<WaypointIndex, std::uint64_t> links(facts.waypoints.count(), 0);
  forEachEdge(facts, [&](WaypointIndex waypoint, PathIndex path) {
    links[waypoint] += facts.paths.endsOf(path).size();
  });
  std::size_t without = 0;
  for (WaypointIndex waypoint{0}; waypoint < links.endIndex(); ++waypoint) {
    const WaypointIndex first = facts.firstOf(waypoint);
    if (first == waypoint) continue;
    if (links[first] > left) {
      ++without;
      continue;
    }
    left -= links[first];
    bounds.repeats.push_back(waypoint);
  }
  if (without == 0) return;
  logSdk(std::to_string(without) + " waypoints have ids of others too often to be walked on");
}

// How many edges each waypoint has, as the list of where they begin.
Indexed<WaypointIndex, EdgeIndex> beginnings(const VenueFacts& facts, const LinkBounds& bounds) {
  Indexed<WaypointIndex, std::uint32_t> counts(facts.waypoints.count(), 0);
  forEachEdge(facts, [&](WaypointIndex waypoint, PathIndex) { ++counts[waypoint]; });
  for (const WaypointIndex waypoint : bounds.repeats) {
    counts[waypoint] = counts[facts.firstOf(waypoint)];
  }
  for (const WaypointIndex exit : facts.paths.exits) ++counts[exit];
  Indexed<WaypointIndex, EdgeIndex> first;
  first.reserve(counts.size() + 1);
  std::uint32_t sum = 0;
  for (const std::uint32_t count : counts) {
    first.push_back(EdgeIndex{sum});
    sum += count;
  }
  first.push_back(EdgeIndex{sum});
  return first;
}

}  // namespace

bool LinkBounds::isLinked(PathIndex path) const {
  return unlinked.empty() || !std::ranges::binary_search(unlinked, path);
}

LinkBounds boundLinks(const VenueFacts& facts, const TernASGrid::Paths& records) {
  LinkBounds bounds;
  std::uint64_t left = spareLinks + linksAnEnd * facts.paths.ends.size();
  boundPaths(facts, records, left, bounds);
  if (facts.hasRepeats()) boundRepeats(facts, left, bounds);
  return bounds;
}

EdgeLists listEdges(const VenueFacts& facts, const LinkBounds& bounds) {
  EdgeLists edges{beginnings(facts, bounds), {}};
  edges.paths.resize(numberOf(edges.first.back()));
  Indexed<WaypointIndex, EdgeIndex> next = edges.first;
  const auto add = [&](WaypointIndex waypoint, PathIndex path) {
    edges.paths[next[waypoint]] = path;
    ++next[waypoint];
  };
  forEachEdge(facts, add);
  for (const WaypointIndex waypoint : bounds.repeats) {
    const WaypointIndex first = facts.firstOf(waypoint);
    for (EdgeIndex edge = edges.first[first]; edge < next[first]; ++edge) {
      add(waypoint, edges.paths[edge]);
    }
  }
  PathIndex virtualPath{facts.paths.recordCount};
  for (const WaypointIndex exit : facts.paths.exits) {
    add(exit, virtualPath);
    ++virtualPath;
  }
  return edges;
}

}  // namespace tern::detail
