#include "tools/check/PictureMarks.hpp"

#include <algorithm>
#include <numeric>

namespace tern::check {

namespace {

void rankParts(const graph::Standing& standing, PictureMarks& marks) {
  const std::vector<std::uint32_t> sizes = graph::sizesOf(standing.weak);
  std::vector<std::uint32_t> order(sizes.size());
  std::iota(order.begin(), order.end(), 0U);
  std::ranges::stable_sort(order,
                           [&](std::uint32_t a, std::uint32_t b) { return sizes[a] > sizes[b]; });
  std::vector<std::uint32_t> rankOf(sizes.size());
  for (std::uint32_t rank = 0; rank < order.size(); ++rank) {
    rankOf[order[rank]] = rank;
    marks.sizes.push_back(sizes[order[rank]]);
  }
  for (const std::uint32_t part : standing.weak) marks.ranks.push_back(rankOf[part]);
}

void addMark(const Subject& subject, std::int64_t id, Mark mark, PictureMarks& marks) {
  if (const auto node = subject.network.find(id)) marks.nodes.emplace_back(*node, mark);
}

// The ends of paths that name another waypoint, too, which is not there.
void markLoosePaths(const Subject& subject, PictureMarks& marks) {
  forEachMap(subject, [&](const Value& map) {
    for (const Value& path : itemsOf(map, "paths")) {
      const auto ends = path["waypointIds"].items();
      const bool isWhole = std::ranges::all_of(
          ends, [&](const Value& id) { return subject.network.find(id.integer()).has_value(); });
      if (isWhole && ends.size() > 1) continue;
      for (const Value& id : ends) addMark(subject, id.integer(), Mark::loose, marks);
    }
  });
}

void markFinding(const Subject& subject, const Finding& finding, PictureMarks& marks) {
  switch (finding.kind) {
    case Kind::moverToNowhere:
      return addMark(subject, finding.ids.back(), Mark::loose, marks);
    case Kind::zeroLength:
      return addMark(subject, finding.ids.back(), Mark::noLength, marks);
    case Kind::oneWayTrap:
      for (const std::int64_t id : finding.ids) addMark(subject, id, Mark::trap, marks);
      return;
    case Kind::longLink:
    case Kind::throughWall: {
      const auto from = subject.network.find(finding.ids[1]);
      const auto to = subject.network.find(finding.ids[2]);
      if (from && to) marks.wrongLinks.emplace_back(*from, *to);
      return;
    }
    default:
      return;
  }
}

}  // namespace

PictureMarks marksOf(const Subject& subject, const Findings& findings) {
  PictureMarks marks;
  rankParts(subject.standing, marks);
  for (const Finding& finding : findings) markFinding(subject, finding, marks);
  markLoosePaths(subject, marks);
  std::ranges::sort(marks.nodes);
  marks.nodes.erase(std::unique(marks.nodes.begin(), marks.nodes.end()), marks.nodes.end());
  return marks;
}

}  // namespace tern::check
