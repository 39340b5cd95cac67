#include "tools/import/write/VenuePlan.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "tools/import/write/Levels.hpp"
#include "tools/import/write/PathTypes.hpp"

namespace tern::imports {

namespace {

constexpr std::int64_t onlyVenueId = 1;
// However long a link is, it has no more pieces between two bends.
constexpr double mostPieces = 100;
// From then on nothing is cut any more.
constexpr std::size_t mostCutWaypoints = 2'000'000;

// A twentieth of a millimetre is as fine as a map is told.
Point rounded(Point at) { return {std::round(at.x * 1000) / 1000, std::round(at.y * 1000) / 1000}; }

class Planner {
 public:
  Planner(const Draft& draft, const VenueWishes& wishes, IdTable& ids)
      : draft_(draft), wishes_(wishes), ids_(ids) {
    plan_.draft = &draft;
    plan_.oddities = draft.oddities;
  }

  VenuePlan plan() {
    planHead();
    planFloors();
    for (const DraftNode& node : draft_.nodes) addWaypoint(node.id, node.floor, node.at);
    for (const DraftLink& link : draft_.links) linkIds_.insert(link.id);
    for (std::size_t i = 0; i < draft_.links.size(); ++i) planLink(i);
    planPlaces();
    return std::move(plan_);
  }

 private:
  void planHead() {
    plan_.id = wishes_.customer ? ids_.of("venue", draft_.id) : onlyVenueId;
    plan_.language = wishes_.language.empty() ? draft_.language : wishes_.language;
    plan_.name =
        wishes_.name.empty() ? std::string(nameIn(draft_.names, plan_.language)) : wishes_.name;
    const std::uint64_t stamp = hashOf(plan_.name + "\n" + plan_.language, draft_.stamp);
    plan_.generatedAt = static_cast<std::int64_t>(stamp % 1'000'000'000) + 1'000'000'000;
    plan_.placement = placementOf(draft_, plan_.oddities);
  }

  void planFloors() {
    const std::vector<int> levels = levelsOf(draft_);
    for (const DraftBuilding& building : draft_.buildings) {
      plan_.buildingIds.push_back(ids_.of("building", building.id));
    }
    for (std::size_t i = 0; i < draft_.floors.size(); ++i) {
      // Venues of one feed may share a level; each draws it on a map of its own, by which an
      // application finds the venue.
      const std::string& level = draft_.floors[i].id;
      const std::string id = wishes_.customer ? draft_.id + " " + level : level;
      plan_.floors.push_back({ids_.of("floor", id), ids_.of("map", id), levels[i]});
    }
  }

  // A source may call a node as a bend of a way is called here, "WAY#1", or a way as a piece of
  // one.
  static std::string freeId(std::unordered_set<std::string>& taken, std::string id) {
    while (!taken.insert(id).second) id += '#';
    return id;
  }

  std::size_t addWaypoint(std::string sourceId, std::size_t floor, Point at) {
    sourceId = freeId(waypointIds_, std::move(sourceId));
    plan_.waypoints.push_back({ids_.of("waypoint", sourceId),
                               externalIdOf(sourceId),
                               floor,
                               rounded(plan_.placement.onMap(at)),
                               {},
                               {}});
    return plan_.waypoints.size() - 1;
  }

  void planLink(std::size_t index) {
    const DraftLink& link = draft_.links[index];
    plan_.kinds[static_cast<std::size_t>(link.kind)] += link.records;
    const std::size_t from = draft_.nodes[link.from].floor;
    const std::size_t to = draft_.nodes[link.to].floor;
    if (from != to) {
      planClimb(index);
      return;
    }
    if (link.direction != Direction::both) {
      plan_.oddities.tell(link.id, "one-way",
                          "A venue knows no one-way on one floor; it is walked both ways.");
    }
    planLevel(index);
  }

  void planClimb(std::size_t index) {
    const DraftLink& link = draft_.links[index];
    const int rise = levelOf(link.to) - levelOf(link.from);
    PlannedPath path = pathOf(index, link.from, link.to, true);
    if (link.direction != Direction::both) {
      if (rise == 0) {
        plan_.oddities.tell(link.id, "one-way",
                            "A venue knows no one-way on one level; it is walked both ways.");
      } else {
        path.direction = (rise > 0) == (link.direction == Direction::forward) ? 1 : 2;
      }
    }
    if (!link.bends.empty()) {
      plan_.oddities.tell(link.id, "bends", "A way between floors is drawn without its bends.");
    }
    addPath(std::move(path), 0);
  }

  int levelOf(std::size_t node) const { return plan_.floors[draft_.nodes[node].floor].level; }

  // The way from bend to bend, in pieces.
  void planLevel(std::size_t index) {
    const DraftLink& link = draft_.links[index];
    const PathTypeRow& type = pathTypeRow(pathTypeOf(link, false));
    const std::size_t floor = draft_.nodes[link.from].floor;
    Line line{draft_.nodes[link.from].at};
    line.insert(line.end(), link.bends.begin(), link.bends.end());
    line.push_back(draft_.nodes[link.to].at);
    std::vector<Point> stops;
    for (std::size_t i = 1; i < line.size(); ++i) addStops(stops, line[i - 1], line[i], type);
    std::size_t before = link.from;
    for (std::size_t i = 0; i < stops.size(); ++i) {
      const bool isLast = i + 1 == stops.size();
      const std::size_t next =
          isLast ? link.to : addWaypoint(link.id + "#" + std::to_string(i + 1), floor, stops[i]);
      addPath(pathOf(index, before, next, false), i);
      before = next;
    }
  }

  void addStops(std::vector<Point>& stops, Point from, Point to, const PathTypeRow& type) const {
    const double metres = std::hypot(to.x - from.x, to.y - from.y);
    const double most = plan_.waypoints.size() < mostCutWaypoints ? mostPieces : 1;
    const double pieces = std::clamp(std::round(metres / type.pieceMetres), 1.0, most);
    for (double piece = 1; piece <= pieces; ++piece) {
      const double part = piece / pieces;
      stops.push_back({std::lerp(from.x, to.x, part), std::lerp(from.y, to.y, part)});
    }
  }

  PlannedPath pathOf(std::size_t link, std::size_t from, std::size_t to, bool changesFloor) const {
    PlannedPath path;
    path.pathType = pathTypeOf(draft_.links[link], changesFloor);
    path.from = from;
    path.to = to;
    path.link = link;
    return path;
  }

  // The first piece of a link has its id, the others have it with a number.
  void addPath(PlannedPath path, std::size_t piece) {
    std::string id = draft_.links[path.link].id;
    if (piece > 0) id = freeId(linkIds_, id + "#" + std::to_string(piece + 1));
    path.id = ids_.of("path", id);
    path.externalId = externalIdOf(id);
    plan_.paths.push_back(std::move(path));
  }

  void planPlaces() {
    for (const DraftCategory& category : draft_.categories) {
      plan_.categoryIds.push_back(ids_.of("category", category.id));
    }
    std::map<std::string, std::size_t> known;
    for (std::size_t i = 0; i < draft_.places.size(); ++i) {
      const DraftPlace& place = draft_.places[i];
      const bool isAmenity = place.names.empty();
      std::vector<PlannedPlace>& list = isAmenity ? plan_.amenities : plan_.destinations;
      const std::string key = isAmenity ? "amenity " + std::to_string(place.category)
                                        : "destination " + place.names.front().text;
      const auto [at, isNew] = known.try_emplace(key, list.size());
      if (isNew) list.push_back(isAmenity ? amenityOf(place) : destinationOf(place));
      list[at->second].places.push_back(i);
      addKeywords(place, list[at->second]);
      for (const std::size_t node : place.nodes) join(list[at->second], node, isAmenity);
    }
  }

  static void addKeywords(const DraftPlace& from, PlannedPlace& to) {
    for (const std::string& keyword : from.keywords) {
      if (std::ranges::find(to.keywords, keyword) == to.keywords.end()) {
        to.keywords.push_back(keyword);
      }
    }
  }

  PlannedPlace amenityOf(const DraftPlace& place) {
    const DraftCategory& category = draft_.categories[place.category];
    return {ids_.of("amenity", category.id),
            externalIdOf(category.id),
            place.category,
            category.names,
            {},
            {}};
  }

  PlannedPlace destinationOf(const DraftPlace& place) {
    return {ids_.of("destination", place.id),
            externalIdOf(place.id),
            place.category,
            place.names,
            {},
            {}};
  }

  void join(PlannedPlace& place, std::size_t node, bool isAmenity) {
    if (!joined_.insert({place.id, isAmenity, node}).second) return;
    PlannedWaypoint& waypoint = plan_.waypoints[node];
    (isAmenity ? waypoint.amenities : waypoint.destinations).push_back(place.id);
    place.waypoints.push_back(node);
  }

  const Draft& draft_;
  const VenueWishes& wishes_;
  IdTable& ids_;
  VenuePlan plan_;
  std::unordered_set<std::string> waypointIds_;
  std::unordered_set<std::string> linkIds_;
  // Places, whether they are amenities, and the nodes that they have already.
  std::set<std::tuple<std::int64_t, bool, std::size_t>> joined_;
};

}  // namespace

std::string externalIdOf(std::string_view sourceId) {
  std::string out;
  for (const char c : sourceId) {
    if (c == ':') {
      out += "%3A";
    } else {
      out += c;
    }
  }
  return out;
}

VenuePlan planVenue(const Draft& draft, const VenueWishes& wishes, IdTable& ids) {
  return Planner(draft, wishes, ids).plan();
}

}  // namespace tern::imports
