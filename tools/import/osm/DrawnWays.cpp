#include "tools/import/osm/DrawnWays.hpp"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "tools/import/osm/OsmGeometry.hpp"
#include "tools/import/osm/OsmOutdoors.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

constexpr double sameStandMetres = 0.01;

class DrawnWayReader {
 public:
  DrawnWayReader(const OsmFrame& frame, const OsmPlans& plans, const OsmOutlines& outlines,
                 const FloorAreas& byPlace, Site& site)
      : frame_(frame), plans_(plans), outlines_(outlines), byPlace_(byPlace), site_(site) {}

  DrawnWays read() {
    OsmWalks made(
        chosenWalks(), frame_.nodes, outlines_,
        [this](std::size_t floor, Point at) { return byPlace_.at(floor, at).has_value(); },
        frame_.draft);
    for (const OsmPoint& door : frame_.found.doors) {
      stateAt(made, door);
      if (isOsmBarred(door.node->tags)) made.shutAt(door.node->id);
    }
    for (const OsmPoint& lift : plans_.lifts) stateAt(made, lift);
    made.add();
    for (const OsmStop& stop : made.throughWalls()) drawn_.openings.insert(stop);
    for (const OsmPoint& lift : plans_.lifts) addLift(lift);
    for (const OsmStop& stop : made.ends()) standAt(stop);
    return std::move(drawn_);
  }

 private:
  std::vector<OsmWalk> chosenWalks() {
    std::vector<OsmWalk> walks;
    for (const OsmLine& line : frame_.found.walks) {
      if (line.levels.empty()) {
        ++drawn_.others;
      } else {
        addWalk(walks, line, line.levels);
      }
    }
    if (!frame_.floors.contains(0)) return walks;
    for (const OsmLine* const line : walksBeside(frame_.found, frame_.nodes, plans_.areas)) {
      --drawn_.others;
      addWalk(walks, *line, {0});
    }
    return walks;
  }

  void addWalk(std::vector<OsmWalk>& walks, const OsmLine& line,
               const std::vector<double>& levels) const {
    const std::string record = osmId(OsmKind::way, line.way->id);
    if (!std::ranges::all_of(osmLine(frame_.nodes, line.way->refs), isNearSite)) {
      frame_.tell(record, "far", "It lies more than 10 km from the others.");
      return;
    }
    auto floors = frame_.floorsOf(record, levels);
    if (floors.empty()) return;
    walks.push_back({line.way, *osmWalkMeaning(line.way->tags), std::move(floors)});
  }

  void stateAt(OsmWalks& walks, const OsmPoint& point) const {
    std::vector<std::size_t> floors;
    for (const double level : point.levels) {
      const auto floor = frame_.floors.find(level);
      if (floor != frame_.floors.end()) floors.push_back(floor->second);
    }
    if (!floors.empty()) walks.state(point.node->id, floors);
    walks.stopAt(point.node->id);
  }

  // One that is drawn as a node alone.
  void addLift(const OsmPoint& lift) {
    const std::string record = osmId(OsmKind::node, lift.node->id);
    const auto floors = frame_.floorsOf(record, lift.levels);
    if (floors.size() < 2 || !isNearSite(*frame_.nodes.placeOf(lift.node->id))) {
      frame_.tell(record, "leadsNowhere", "The lift does not lead from one floor to another.");
      return;
    }
    std::optional<std::size_t> below;
    for (const std::size_t floor : floors) {
      const std::size_t node = frame_.nodes.walkedOn(lift.node->id, floor, true);
      standAt({lift.node->id, floor});
      if (below) addRide(lift.node->tags, *below, node);
      below = node;
    }
  }

  void addRide(const OsmTags& tags, std::size_t below, std::size_t above) const {
    Draft& draft = frame_.draft;
    DraftLink link;
    link.id = draft.nodes[below].id + "^" + draft.nodes[above].id;
    link.from = below;
    link.to = above;
    link.kind = osmLiftMeaning(tags).link;
    link.details = osmDetails(tags);
    draft.links.push_back(std::move(link));
  }

  // The made ways lead to what is drawn amid an area.
  void standAt(OsmStop stop) {
    const std::size_t node = frame_.nodes.walkedOn(stop.first, stop.second);
    const DraftNode& drawn = frame_.draft.nodes[node];
    const bool isDoor =
        isOsmDoor(frame_.nodes.find(stop.first)->tags) && !outlines_.floorsAt(stop.first).empty();
    const bool isOpening = isDoor || drawn_.openings.contains(stop);
    if (isOpening || !byPlace_.at(stop.second, drawn.at)) return;
    if (!standing_.insert(node).second) return;
    drawn_.joints.emplace_back(site_.stands.size(), node);
    site_.stands.push_back({drawn.id, stop.second, drawn.at});
  }

  const OsmFrame& frame_;
  const OsmPlans& plans_;
  const OsmOutlines& outlines_;
  const FloorAreas& byPlace_;
  Site& site_;
  DrawnWays drawn_;
  // Nodes that have a stand.
  std::set<std::size_t> standing_;
};

}  // namespace

DrawnWays readDrawnWays(const OsmFrame& frame, const OsmPlans& plans, const OsmOutlines& outlines,
                        const FloorAreas& byPlace, Site& site) {
  return DrawnWayReader(frame, plans, outlines, byPlace, site).read();
}

std::map<std::size_t, std::size_t> joinDrawnWays(const DrawnWays& drawn, const MadeWays& made,
                                                 Draft& draft) {
  std::map<std::size_t, std::size_t> same;
  for (const auto& [stand, node] : drawn.joints) {
    const auto at = made.ofStand[stand];
    if (!at || draft.nodes[*at].id == draft.nodes[node].id) continue;
    if (apart(draft.nodes[node].at, draft.nodes[*at].at) < sameStandMetres) {
      same.emplace(*at, node);
      continue;
    }
    DraftLink link;
    link.id = draft.nodes[node].id + "=" + draft.nodes[*at].id;
    link.from = node;
    link.to = *at;
    link.isWithinArea = true;
    draft.links.push_back(std::move(link));
  }
  return same;
}

}  // namespace tern::imports
