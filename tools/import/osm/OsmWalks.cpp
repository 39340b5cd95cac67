#include "tools/import/osm/OsmWalks.hpp"

#include <algorithm>
#include <iterator>
#include <string>

namespace tern::imports {

namespace {

using FloorList = std::vector<std::size_t>;

FloorList commonOf(const FloorList& a, const FloorList& b) {
  FloorList both;
  std::ranges::set_intersection(a, b, std::back_inserter(both));
  return both;
}

}  // namespace

OsmWalks::OsmWalks(std::vector<OsmWalk> walks, OsmNodes& nodes, const OsmOutlines& outlines,
                   IsHeld isHeld, Draft& draft)
    : walks_(std::move(walks)),
      nodes_(nodes),
      outlines_(outlines),
      isHeld_(std::move(isHeld)),
      draft_(draft) {
  for (const OsmWalk& walk : walks_) {
    for (const std::int64_t node : walk.way->refs) ++uses_[node];
    if (walk.way->refs.empty()) continue;
    state(walk.way->refs.front(), walk.floors);
    state(walk.way->refs.back(), walk.floors);
    for (const std::size_t floor : walk.floors) {
      ++walksAt_[{walk.way->refs.front(), floor}];
      ++walksAt_[{walk.way->refs.back(), floor}];
    }
    if (walk.floors.size() > 1) continue;
    for (const std::int64_t node : walk.way->refs) {
      state(node, walk.floors);
      ++walksAt_[{node, walk.floors.front()}];
    }
  }
}

void OsmWalks::state(std::int64_t node, std::vector<std::size_t> floors) {
  const auto [known, isNew] = shared_.try_emplace(node, floors);
  if (!isNew) known->second = commonOf(known->second, floors);
}

void OsmWalks::add() {
  for (const OsmWalk& walk : walks_) {
    if (walk.way->refs.size() < 2) {
      draft_.oddities.tell(osmId(OsmKind::way, walk.way->id), "noShape",
                           "Fewer than two of its nodes are there.");
    } else if (walk.floors.size() == 1) {
      addFlat(walk, 0, walk.way->refs.size() - 1, walk.floors.front());
    } else {
      addClimb(walk);
    }
  }
}

OsmWalks::Floors OsmWalks::metAt(const OsmWalk& walk, std::int64_t node) const {
  const auto shared = shared_.find(node);
  return shared == shared_.end() ? walk.floors : commonOf(walk.floors, shared->second);
}

OsmWalks::Floors OsmWalks::outlinedAt(const OsmWalk& walk, std::int64_t node) const {
  return commonOf(walk.floors, outlines_.floorsAt(node));
}

OsmWalks::Floors OsmWalks::heldAt(const OsmWalk& walk, std::int64_t node) const {
  Floors floors;
  for (const std::size_t floor : walk.floors) {
    if (isHeld_(floor, *nodes_.placeOf(node))) floors.push_back(floor);
  }
  return floors;
}

// Each end may lie on one of several floors; one of them has to settle it.
std::optional<bool> OsmWalks::risesBy(const OsmWalk& walk, const Floors& front,
                                      const Floors& back) const {
  const auto leans = [&](const Floors& end) {
    if (end.empty()) return 0;
    const bool isLow = end.front() == walk.floors.front();
    const bool isHigh = end.back() == walk.floors.back();
    return isLow == isHigh ? 0 : isLow ? -1 : 1;
  };
  const int lean = leans(back) - leans(front);
  return lean == 0 ? std::nullopt : std::optional(lean > 0);
}

bool OsmWalks::rises(const OsmWalk& walk) {
  const std::int64_t front = walk.way->refs.front();
  const std::int64_t back = walk.way->refs.back();
  if (const auto met = risesBy(walk, metAt(walk, front), metAt(walk, back))) return *met;
  if (walk.meaning.rises) return *walk.meaning.rises;
  if (const auto seen = risesBy(walk, outlinedAt(walk, front), outlinedAt(walk, back))) {
    return *seen;
  }
  if (const auto held = risesBy(walk, heldAt(walk, front), heldAt(walk, back))) return *held;
  draft_.oddities.remark(osmId(OsmKind::way, walk.way->id), "whichEnd",
                         "Nothing says which of its ends is the lower one; it is taken to rise.");
  return true;
}

// The ends, and what between them is known to lie on a level between.
std::vector<OsmWalks::Anchor> OsmWalks::anchorsOf(const OsmWalk& walk) {
  const std::vector<std::int64_t>& refs = walk.way->refs;
  const bool isRising = rises(walk);
  std::vector<Anchor> anchors{{0, isRising ? walk.floors.front() : walk.floors.back()}};
  for (std::size_t i = 1; i + 1 < refs.size(); ++i) {
    const auto shared = shared_.find(refs[i]);
    if (shared == shared_.end()) continue;
    const Floors met = commonOf(walk.floors, shared->second);
    if (met.size() == 1) anchors.push_back({i, met.front()});
  }
  anchors.push_back({refs.size() - 1, isRising ? walk.floors.back() : walk.floors.front()});
  return anchors;
}

// Whether one can leave the way at its end: another one, an outline or an area meets it there.
bool OsmWalks::isLeftAt(const OsmWalk& walk, std::int64_t end, std::size_t floor) const {
  const auto holds = [floor](const Floors& floors) {
    return std::ranges::find(floors, floor) != floors.end();
  };
  return walksAt_.at({end, floor}) > 1 || holds(outlinedAt(walk, end)) || holds(heldAt(walk, end));
}

// A way on more than two floors leads from each that it can be left on to the next: it is drawn
// once for stairs over each other, which end where the next ones end and begin where they begin.
bool OsmWalks::addStoreys(const OsmWalk& walk, const std::vector<Anchor>& anchors) {
  if (walk.floors.size() < 3 || anchors.size() > 2) return false;
  const std::int64_t low =
      walk.way->refs[anchors.front().floor == walk.floors.front() ? 0 : walk.way->refs.size() - 1];
  const std::int64_t high =
      low == walk.way->refs.front() ? walk.way->refs.back() : walk.way->refs.front();
  const bool isRising = low == walk.way->refs.front();
  OsmStop below{low, walk.floors.front()};
  for (std::size_t i = 1; i < walk.floors.size(); ++i) {
    const std::size_t floor = walk.floors[i];
    const bool isTop = i + 1 == walk.floors.size();
    const bool isLeftHigh = isTop || isLeftAt(walk, high, floor);
    const bool isLeftLow = !isTop && isLeftAt(walk, low, floor);
    if (!isLeftHigh && !isLeftLow) continue;
    const OsmStop above{isLeftHigh ? high : low, floor};
    if (isRising) {
      addLink(walk, below, above, {}, false);
    } else {
      addLink(walk, above, below, {}, false);
    }
    below = {isLeftLow ? low : high, floor};
  }
  return true;
}

void OsmWalks::addClimb(const OsmWalk& walk) {
  const std::vector<std::int64_t>& refs = walk.way->refs;
  const std::vector<Anchor> anchors = anchorsOf(walk);
  if (addStoreys(walk, anchors)) return;
  for (std::size_t i = 1; i < anchors.size(); ++i) {
    const Anchor from = anchors[i - 1];
    const Anchor to = anchors[i];
    if (from.floor == to.floor) {
      addFlat(walk, from.index, to.index, from.floor);
    } else {
      addLink(walk, {refs[from.index], from.floor}, {refs[to.index], to.floor}, {}, false);
    }
  }
}

bool OsmWalks::goesThroughWall(const OsmWalk& walk, std::size_t index, std::size_t floor) const {
  const std::vector<std::int64_t>& refs = walk.way->refs;
  if (shut_.contains(refs[index]) || !outlines_.isOnWall(refs[index], floor)) return false;
  const bool isAlongBefore = index > 0 && outlines_.shareWall(refs[index], refs[index - 1], floor);
  const bool isAlongAfter =
      index + 1 < refs.size() && outlines_.shareWall(refs[index], refs[index + 1], floor);
  return !isAlongBefore && !isAlongAfter;
}

bool OsmWalks::isStop(const OsmWalk& walk, std::size_t index, std::size_t floor) const {
  const std::int64_t node = walk.way->refs[index];
  return uses_.at(node) > 1 || stops_.contains(node) || goesThroughWall(walk, index, floor);
}

void OsmWalks::addFlat(const OsmWalk& walk, std::size_t from, std::size_t to, std::size_t floor) {
  const std::vector<std::int64_t>& refs = walk.way->refs;
  // A ring that nothing meets would lead from a node to itself.
  const bool isRing = refs[from] == refs[to];
  std::size_t before = from;
  Line bends;
  bool hasStep = isStepAt(refs[from]);
  for (std::size_t i = from + 1; i <= to; ++i) {
    hasStep = hasStep || isStepAt(refs[i]);
    const bool isHalf = isRing && (i - from == (to - from) / 3 || i - from == (to - from) * 2 / 3);
    if (i == to || isHalf || isStop(walk, i, floor)) {
      addLink(walk, {refs[before], floor}, {refs[i], floor}, std::move(bends), hasStep);
      bends.clear();
      before = i;
      hasStep = isStepAt(refs[i]);
    } else {
      bends.push_back(*nodes_.placeOf(refs[i]));
    }
  }
}

bool OsmWalks::isStepAt(std::int64_t node) const { return isOsmStep(nodes_.find(node)->tags); }

void OsmWalks::addLink(const OsmWalk& walk, OsmStop from, OsmStop to, Line bends, bool hasStep) {
  if (from == to || shut_.contains(from.first) || shut_.contains(to.first)) return;
  ends_.insert(from);
  ends_.insert(to);
  const int piece = ++pieces_[walk.way->id];
  DraftLink link;
  link.id = osmId(OsmKind::way, walk.way->id) + (piece == 1 ? "" : "/" + std::to_string(piece));
  link.from = nodes_.walkedOn(from.first, from.second);
  link.to = nodes_.walkedOn(to.first, to.second);
  link.kind = walk.meaning.kind;
  link.direction = walk.meaning.direction;
  const bool isOfSteps =
      walk.meaning.kind == LinkKind::stairs || walk.meaning.kind == LinkKind::escalator;
  link.hasSteps = walk.meaning.hasSteps || (hasStep && !isOfSteps);
  link.isSteep = walk.meaning.isSteep;
  link.details = osmDetails(walk.way->tags);
  link.bends = std::move(bends);
  draft_.links.push_back(std::move(link));
}

std::vector<OsmStop> OsmWalks::throughWalls() const {
  std::vector<OsmStop> found;
  for (const OsmWalk& walk : walks_) {
    if (walk.floors.size() > 1) continue;
    for (std::size_t i = 0; i < walk.way->refs.size(); ++i) {
      if (goesThroughWall(walk, i, walk.floors.front())) {
        found.emplace_back(walk.way->refs[i], walk.floors.front());
      }
    }
  }
  return found;
}

}  // namespace tern::imports
