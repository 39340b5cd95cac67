#include "tools/import/gtfs/StationDraft.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/draft/MiddleValue.hpp"
#include "tools/import/gtfs/LevelNames.hpp"
#include "tools/import/gtfs/NodePlaces.hpp"
#include "tools/import/gtfs/PathwayCodes.hpp"
#include "tools/import/gtfs/StationLevels.hpp"
#include "tools/import/gtfs/StationNames.hpp"

namespace tern::imports {

namespace {

// Farther from the middle of the station is another place.
constexpr double mostStationMetres = 10'000;
// Of names where the feed does not say.
constexpr std::string_view fallbackLanguage = "en";

class StationDrafter {
 public:
  StationDrafter(const GtfsFeed& feed, const StationParts& parts)
      : feed_(feed), parts_(parts), station_(feed.stops()[parts.station]) {}

  Draft draft() {
    draft_.oddities = parts_.told;
    findNodes();
    readHead();
    readPlaces();
    readLevels();
    placeNodes();
    readLinks();
    readNamedPlaces();
    readAmenities();
    tellTheRest();
    return std::move(draft_);
  }

 private:
  struct Node {
    const GtfsStop* stop;
    std::optional<LonLat> globe;
  };

  void tell(const std::string& id, std::string_view kind, std::string why) {
    draft_.oddities.tell(id, kind, std::move(why));
  }

  void remark(const std::string& id, std::string_view kind, std::string why) {
    draft_.oddities.remark(id, kind, std::move(why));
  }

  const GtfsPathway& pathway(std::size_t index) const { return feed_.pathways()[index]; }
  std::size_t nodeOf(const std::string& stop) const { return nodeOfStop_.at(stop); }
  const GtfsStop* parentOf(const GtfsStop& stop) const {
    const auto parent = feed_.stopOf(stop.parent);
    return parent ? &feed_.stops()[*parent] : nullptr;
  }

  // The stops that a pathway leads to.
  void findNodes() {
    std::set<std::string_view> ends;
    for (const std::size_t index : parts_.pathways) {
      ends.insert({pathway(index).from, pathway(index).to});
    }
    for (const std::size_t index : parts_.stops) {
      const GtfsStop& stop = feed_.stops()[index];
      if (!ends.contains(stop.id)) continue;
      nodeOfStop_.emplace(stop.id, nodes_.size());
      if (stop.kind == StopKind::boardingArea) areasOf_[stop.parent].push_back(nodes_.size());
      nodes_.push_back({&stop, stop.place});
    }
  }

  void readHead() {
    draft_.id = station_.id;
    draft_.names = feed_.stopNames(station_);
    if (draft_.names.empty()) draft_.names = {{"", station_.id}};
    draft_.language = feed_.language().empty() ? fallbackLanguage : feed_.language();
    draft_.stamp = feed_.stamp();
    draft_.buildings.push_back({station_.id, feed_.stopNames(station_), {}});
  }

  // Those that the feed says, on a plane about the middle of them.
  void readPlaces() {
    std::vector<double> longitudes;
    std::vector<double> latitudes;
    const auto add = [&](const std::optional<LonLat>& place) {
      if (!place) return;
      longitudes.push_back(place->longitude);
      latitudes.push_back(place->latitude);
    };
    for (const Node& node : nodes_) add(node.globe);
    if (longitudes.empty()) add(station_.place);
    if (longitudes.empty()) {
      remark(station_.id, "noPlace", "Nothing of the station has a place on the globe.");
    } else {
      draft_.plane = LocalPlane({middleValue(longitudes), middleValue(latitudes)});
    }
    for (Node& node : nodes_) {
      if (!node.globe || isNear(draft_.plane.at(*node.globe))) continue;
      tell(node.stop->id, "far",
           "It lies more than 10 km from the station; it is placed between its neighbours.");
      node.globe.reset();
    }
  }

  static bool isNear(Point at) { return std::hypot(at.x, at.y) <= mostStationMetres; }

  void readLevels() {
    std::vector<std::optional<double>> stated;
    std::vector<bool> isEntrance;
    bool isAnyStated = false;
    for (const Node& node : nodes_) {
      const GtfsLevel* const level = levelOf(*node.stop);
      stated.push_back(level != nullptr ? std::optional(level->index) : std::nullopt);
      isEntrance.push_back(node.stop->kind == StopKind::entrance);
      isAnyStated = isAnyStated || level != nullptr;
    }
    std::vector<LevelLink> links;
    for (const std::size_t index : parts_.pathways) {
      const GtfsPathway& way = pathway(index);
      links.push_back({nodeOf(way.from), nodeOf(way.to), climbs(way.mode),
                       way.mode == PathwayMode::elevator, riseOf(way)});
    }
    ordinals_ = ordinalsOf(stated, isEntrance, links);
    addFloors();
    if (!isAnyStated) {
      remark(station_.id, "noLevels",
             "None of its stops has a level; they follow from the pathways.");
      return;
    }
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      if (!stated[i]) unlevelled_.push_back(i);
    }
  }

  // A boarding area lies on the level of its platform.
  const GtfsLevel* levelOf(const GtfsStop& stop) const {
    const GtfsStop* const parent = parentOf(stop);
    if (!stop.level.empty() || parent == nullptr) return feed_.level(stop.level);
    return feed_.level(parent->level);
  }

  // A floor for each ordinal, called by its levels, that of most stops first.
  void addFloors() {
    std::map<double, std::map<std::string, int>> levels;
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      const GtfsLevel* const level = levelOf(*nodes_[i].stop);
      auto& stops = levels[ordinals_[i]];
      if (level != nullptr && level->index == ordinals_[i]) ++stops[level->id];
    }
    for (const auto& [ordinal, stops] : levels) {
      floorOf_.emplace(ordinal, draft_.floors.size());
      draft_.floors.push_back(floorOf(ordinal, stops));
    }
  }

  DraftFloor floorOf(double ordinal, const std::map<std::string, int>& stops) const {
    std::vector<std::pair<int, std::string>> ranked;
    for (const auto& [id, count] : stops) ranked.emplace_back(-count, id);
    std::ranges::sort(ranked);
    const std::string number = Value(ordinal).printed();
    DraftFloor floor;
    floor.id = ranked.empty() ? station_.id + " level " + number : ranked.front().second;
    floor.ordinal = ordinal;
    floor.shortNames = {{"", number}};
    for (const auto& [count, id] : ranked) {
      for (const Name& name : feed_.levelNames(*feed_.level(id))) addLevelName(floor.names, name);
    }
    if (floor.names.empty()) floor.names = floor.shortNames;
    return floor;
  }

  void placeNodes() {
    std::vector<PlacedNode> placed;
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      const auto& globe = nodes_[i].globe;
      placed.push_back({globe ? std::optional(draft_.plane.at(*globe)) : std::nullopt,
                        floorOf_.at(ordinals_[i]), fallbackOf(*nodes_[i].stop)});
    }
    std::vector<PlacedLink> links;
    for (const std::size_t index : parts_.pathways) {
      const GtfsPathway& way = pathway(index);
      if (way.from == way.to) continue;
      links.push_back({nodeOf(way.from), nodeOf(way.to), metresOf(way)});
    }
    const std::vector<Point> places = placesOf(placed, links);
    for (std::size_t i = 0; i < nodes_.size(); ++i) addNode(i, placed[i].floor, places[i]);
    for (const std::size_t node : unlevelled_) {
      remark(nodes_[node].stop->id, "noLevel", "It has no level; it follows from the pathways.");
    }
  }

  // The middle of the plane, unless its platform or the station say where they are.
  Point fallbackOf(const GtfsStop& stop) const {
    const GtfsStop* const parent = parentOf(stop);
    const auto& place = parent != nullptr && parent->place ? parent->place : station_.place;
    const Point at = place ? draft_.plane.at(*place) : Point{};
    return isNear(at) ? at : Point{};
  }

  void addNode(std::size_t index, std::size_t floor, Point at) {
    const Node& node = nodes_[index];
    const GtfsStop& stop = *node.stop;
    if (!node.globe) {
      remark(stop.id, "placed", "It has no coordinates; it is placed between its neighbours.");
    }
    if (!stop.level.empty() && feed_.level(stop.level) == nullptr) {
      tell(stop.id, "dangling", "It names a level that is not there.");
    }
    if (stop.isRagged) {
      remark(stop.id, "ragged", "Its row has more or fewer fields than the head of stops.txt.");
    }
    draft_.nodes.push_back({stop.id, floor, at, node.globe, stop.kind == StopKind::entrance});
  }

  void readLinks() {
    // Where a way back is found, by its ends and whether it is a gate or else how it is walked.
    std::map<std::tuple<std::size_t, std::size_t, int>, std::vector<std::size_t>> single;
    for (const std::size_t index : parts_.pathways) {
      const GtfsPathway& way = pathway(index);
      if (way.from == way.to) {
        tell(way.id, "zeroLength", "The pathway leads from a stop to itself.");
        continue;
      }
      tellOf(way);
      const int kind = isGate(way.mode) ? -1 : static_cast<int>(way.mode);
      const std::size_t from = nodeOf(way.from);
      const std::size_t to = nodeOf(way.to);
      std::vector<std::size_t>& waysBack = single[{to, from, kind}];
      const bool isSingle = !isBothWays(way) && way.mode != PathwayMode::escalator;
      if (isSingle && !waysBack.empty()) {
        addWayBack(draft_.links[waysBack.back()], way);
        waysBack.pop_back();
      } else {
        if (isSingle) single[{from, to, kind}].push_back(draft_.links.size());
        draft_.links.push_back(linkOf(way));
      }
    }
  }

  void tellOf(const GtfsPathway& way) {
    if (way.isRagged) {
      remark(way.id, "ragged", "Its row has more or fewer fields than the head of pathways.txt.");
    }
    if (way.mode == PathwayMode::unknown) {
      remark(way.id, "unknownKind", "The pathway's mode is none that is known.");
    }
    const DraftNode& from = draft_.nodes[nodeOf(way.from)];
    const DraftNode& to = draft_.nodes[nodeOf(way.to)];
    if (from.floor == to.floor && from.at == to.at) {
      remark(way.id, "zeroLength", "Both of its ends are given at one point of a floor.");
    }
  }

  // An exit gate lets nobody in, whatever the feed says.
  static bool isBothWays(const GtfsPathway& way) {
    return way.isBothWays && way.mode != PathwayMode::exitGate;
  }

  DraftLink linkOf(const GtfsPathway& way) const {
    DraftLink link;
    link.id = way.id;
    link.from = nodeOf(way.from);
    link.to = nodeOf(way.to);
    link.kind = kindOf(way, endsOf(way));
    link.direction = isBothWays(way) ? Direction::both : Direction::forward;
    link.hasSteps = link.kind == LinkKind::walkway && way.steps.value_or(0) != 0;
    link.isSteep = isSteep(way);
    link.details = detailsOf(way);
    return link;
  }

  PathwayEnds endsOf(const GtfsPathway& way) const {
    const std::size_t from = draft_.nodes[nodeOf(way.from)].floor;
    const std::size_t to = draft_.nodes[nodeOf(way.to)].floor;
    return {from != to, isBarred(way.from) || isBarred(way.to)};
  }

  // Whether a wheelchair is told not to go there; what does not say is as its parent.
  bool isBarred(const std::string& id) const {
    const GtfsStop* stop = nodes_[nodeOf(id)].stop;
    for (int i = 0; i < 2 && stop->wheelchair == 0 && parentOf(*stop) != nullptr; ++i) {
      stop = parentOf(*stop);
    }
    return stop->wheelchair == 2;
  }

  static void addWayBack(DraftLink& link, const GtfsPathway& way) {
    link.direction = Direction::both;
    ++link.records;
    Value details = detailsOf(way);
    details.set("id", way.id);
    link.details.set("wayBack", std::move(details));
  }

  // What a passenger asks for: platforms, boarding areas and entrances.
  void readNamedPlaces() {
    std::map<std::pair<StopKind, std::string_view>, int> namesakes;
    for (const std::size_t index : parts_.stops) {
      const GtfsStop& stop = feed_.stops()[index];
      ++namesakes[{stop.kind, stop.name}];
    }
    for (const std::size_t index : parts_.stops) {
      const GtfsStop& stop = feed_.stops()[index];
      std::vector<std::size_t> nodes = nodesOfPlace(index);
      if (nodes.empty() || stop.kind == StopKind::node) continue;
      const bool isShared = namesakes.at({stop.kind, stop.name}) > 1;
      addPlace(stop.id, categoryOfStop(stop), placeNames(feed_, station_, stop, isShared),
               std::move(nodes));
    }
  }

  // A platform's boarding areas are ways to it, where no pathway leads to the platform itself.
  std::vector<std::size_t> nodesOfPlace(std::size_t index) const {
    const GtfsStop& stop = feed_.stops()[index];
    const auto own = nodeOfStop_.find(stop.id);
    if (own != nodeOfStop_.end()) return {own->second};
    const auto areas = areasOf_.find(stop.id);
    return areas == areasOf_.end() ? std::vector<std::size_t>() : areas->second;
  }

  static DraftCategory categoryOfStop(const GtfsStop& stop) {
    if (stop.kind == StopKind::entrance) return entranceCategory();
    return stop.kind == StopKind::platform ? platformCategory() : boardingAreaCategory();
  }

  void addPlace(const std::string& id, DraftCategory category, Names names,
                std::vector<std::size_t> nodes) {
    const DraftNode& node = draft_.nodes[nodes.front()];
    draft_.places.push_back({id, indexOf(std::move(category)), std::move(names), node.floor,
                             node.at, std::move(nodes)});
  }

  std::size_t indexOf(DraftCategory category) {
    const auto known = std::ranges::find(draft_.categories, category.id, &DraftCategory::id);
    if (known != draft_.categories.end()) {
      return static_cast<std::size_t>(known - draft_.categories.begin());
    }
    draft_.categories.push_back(std::move(category));
    return draft_.categories.size() - 1;
  }

  // Gates and lifts, from both of their sides.
  void readAmenities() {
    for (std::size_t i = 0; i < draft_.links.size(); ++i) {
      const DraftLink& link = draft_.links[i];
      const bool isLift = link.kind == LinkKind::lift || link.kind == LinkKind::stepFreeLift;
      if (!isLift && link.kind != LinkKind::gate) continue;
      for (const std::size_t end : {link.from, link.to}) {
        addPlace(link.id, isLift ? liftCategory() : gateCategory(), {}, {end});
      }
    }
  }

  void tellTheRest() {
    for (const std::size_t index : parts_.stops) {
      const GtfsStop& stop = feed_.stops()[index];
      if (!nodesOfPlace(index).empty()) continue;
      tell(stop.id, "unconnected", "No pathway of the station leads to it.");
    }
  }

  const GtfsFeed& feed_;
  const StationParts& parts_;
  const GtfsStop& station_;
  Draft draft_;
  std::vector<Node> nodes_;
  std::unordered_map<std::string_view, std::size_t> nodeOfStop_;
  std::unordered_map<std::string_view, std::vector<std::size_t>> areasOf_;
  std::vector<double> ordinals_;
  std::map<double, std::size_t> floorOf_;
  // Nodes whose level is not the feed's.
  std::vector<std::size_t> unlevelled_;
};

}  // namespace

Draft draftOf(const GtfsFeed& feed, const StationParts& parts) {
  return StationDrafter(feed, parts).draft();
}

}  // namespace tern::imports
