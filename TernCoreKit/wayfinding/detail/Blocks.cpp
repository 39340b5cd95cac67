#include "TernCoreKit/wayfinding/detail/Blocks.hpp"

#include <algorithm>
#include <unordered_map>

#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"

namespace tern::inline v5::detail {

namespace {

using FirstEdges = std::unordered_map<std::uint32_t, EdgeIndex>;

bool joins(const GridGraph& graph, EdgeIndex edge, PathEnd end) {
  const auto ends = graph.facts.paths.endsOf(graph.edges.paths[edge]);
  return std::ranges::find(ends, end) != ends.end();
}

EdgeIndex firstEdgeTo(const GridGraph& graph, Position from, PathEnd end) {
  const auto [first, last] = graph.edgesOf(from);
  for (EdgeIndex edge = first; edge < last; ++edge) {
    if (joins(graph, edge, end)) return edge;
  }
  return none<EdgeIndex>;
}

// By the id that it joins: the node's first such edge.
FirstEdges firstEdges(const GridGraph& graph, Position from) {
  FirstEdges firsts;
  const auto [first, last] = graph.edgesOf(from);
  for (EdgeIndex edge = first; edge < last; ++edge) {
    for (const PathEnd end : graph.facts.paths.endsOf(graph.edges.paths[edge])) {
      firsts.try_emplace(numberOf(end), edge);
    }
  }
  return firsts;
}

// For each of the node's links that lead to a node: the edge whose mark a search asks.
template <class Visit>
void forEachAskedEdge(const GridGraph& graph, Position from, Visit visit) {
  constexpr std::size_t fewLinks = 16;
  const auto links = graph.graph.linksOf(from);
  const bool areFew = links.size() <= fewLinks;
  const FirstEdges firsts = areFew ? FirstEdges() : firstEdges(graph, from);
  LinkIndex index = graph.graph.firstLink[from];
  for (const Link& link : links) {
    const LinkIndex at = index;
    ++index;
    if (link.target == noPosition) continue;
    const PathEnd end{numberOf(graph.order.waypointAt(link.target))};
    const auto found = firsts.find(numberOf(end));
    const EdgeIndex asked = areFew                  ? firstEdgeTo(graph, from, end)
                            : found != firsts.end() ? found->second
                                                    : none<EdgeIndex>;
    if (asked != none<EdgeIndex>) visit(at, asked);
  }
}

}  // namespace

void Blocks::mark(std::span<const EdgeIndex> edgeList, std::span<const LinkIndex> linkList,
                  bool block) {
  for (const EdgeIndex edge : edgeList) edges.mark(edge, block);
  for (const LinkIndex link : linkList) links[link].setClosed(block);
}

std::vector<bool> marksOf(const Marks<EdgeIndex>& blocked, std::pair<EdgeIndex, EdgeIndex> range) {
  std::vector<bool> marks;
  bool isAny = false;
  for (EdgeIndex edge = range.first; edge < range.second; ++edge) {
    marks.push_back(blocked.has(edge));
    isAny = isAny || marks.back();
  }
  if (!isAny) marks.clear();
  return marks;
}

Blocks noBlocks(const GridGraph& graph) {
  return {Marks<EdgeIndex>(graph.edges.paths.size()), graph.graph.links};
}

void addWaysFrom(const GridGraph& graph, Position from, std::optional<std::int64_t> joining,
                 Ways& ways) {
  const std::size_t before = ways.edges.size();
  const PathEnd end = joining ? graph.facts.endOf(*joining) : none<PathEnd>;
  const auto [first, last] = graph.edgesOf(from);
  for (EdgeIndex edge = first; edge < last; ++edge) {
    if (!joining || joins(graph, edge, end)) ways.edges.push_back(edge);
  }
  const auto meant = std::span(ways.edges).subspan(before);
  forEachAskedEdge(graph, from, [&](LinkIndex link, EdgeIndex edge) {
    if (std::ranges::binary_search(meant, edge)) ways.links.push_back(link);
  });
}

void addWaysInto(const GridGraph& graph, std::int64_t id, std::vector<Position> neighbours,
                 Ways& ways) {
  // Once for each neighbour, however many links lead there.
  std::ranges::sort(neighbours);
  neighbours.erase(std::unique(neighbours.begin(), neighbours.end()), neighbours.end());
  for (const Position neighbour : neighbours) addWaysFrom(graph, neighbour, id, ways);
}

EdgeIndex firstEdgeJoining(const GridGraph& graph, Position from, std::int64_t id) {
  return firstEdgeTo(graph, from, graph.facts.endOf(id));
}

}  // namespace tern::detail
