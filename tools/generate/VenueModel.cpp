#include "tools/generate/VenueModel.hpp"

#include <algorithm>
#include <cstdlib>

namespace tern::generate {

namespace {

// Raised whenever the same options begin to give other documents.
constexpr std::uint64_t generatorVersion = 1;

// 2024-01-01 in milliseconds, and the length of a year.
constexpr std::uint64_t yearStart = 1'704'067'200'000;
constexpr std::uint64_t yearLength = 31'536'000'000;

std::int64_t stampOf(const GenerateOptions& options) {
  std::uint64_t hash = generatorVersion;
  const std::int64_t parts[] = {static_cast<std::int64_t>(options.seed),
                                options.buildings,
                                options.floors,
                                options.shops,
                                options.spacing,
                                options.customer,
                                options.venue};
  for (std::int64_t part : parts) hash = Random(hash, static_cast<std::uint64_t>(part)).next();
  return static_cast<std::int64_t>(yearStart + hash % yearLength);
}

std::int64_t factorFor(int count) { return count < 10 ? 10 : 100; }

Zone zoneOf(const BuildingPlan& building, int level) {
  if (level < 0) return Zone::basement;
  if (level == 0) return Zone::ground;
  return level == building.highestLevel() ? Zone::top : Zone::upper;
}

class VenuePlanner {
 public:
  explicit VenuePlanner(const GenerateOptions& options) : names_(options.seed) {
    venue_.options = options;
  }

  VenueModel plan() {
    const GenerateOptions& options = venue_.options;
    venue_.site = planSite(static_cast<int>(options.buildings), static_cast<int>(options.floors),
                           options.shops);
    nameVenue();
    for (const BuildingPlan& building : venue_.site.buildings) addBuilding(building);
    for (const BuildingLink& link : venue_.site.links) joinBuildings(link);
    numberIds();
    venue_.generatedAt = stampOf(options);
    return std::move(venue_);
  }

 private:
  FloorModel& floor(int index) { return venue_.floors[static_cast<std::size_t>(index)]; }

  void nameVenue() {
    Random random(venue_.options.seed, 2);
    const auto first = venueFirstWords();
    const auto second = venueSecondWords();
    venue_.city = random.below(static_cast<int>(cities().size()));
    venue_.name = first[static_cast<std::size_t>(random.below(static_cast<int>(first.size())))];
    venue_.name += " ";
    venue_.name += second[static_cast<std::size_t>(random.below(static_cast<int>(second.size())))];
  }

  void addBuilding(const BuildingPlan& building) {
    const auto first = static_cast<int>(venue_.floors.size());
    firstFloors_.push_back(first);
    sharedAnchor_ = -1;
    for (int i = 0; i < building.floors; ++i) addFloor(building, building.lowestLevel + i);
    for (int i = 0; i < building.floors; ++i) {
      joinLifts(first + i, first, building.floors);
      if (i + 1 < building.floors) joinStairs(first + i);
      if (i + 1 < building.floors) joinEscalators(first + i);
    }
  }

  void addFloor(const BuildingPlan& building, int level) {
    const auto place = static_cast<std::size_t>(level - building.lowestLevel);
    const int shops = building.shops[place];
    const bool shares = level == 1 && sharedAnchor_ >= 0;
    FloorModel& model = venue_.floors.emplace_back();
    model.building = building.index;
    model.level = level;
    model.code = buildingLetter(building.index) + "-" + shortFloorName(level);
    model.plan = planFloor(
        building, level, shops + (shares ? 1 : 0),
        Random(venue_.options.seed, 3 + static_cast<std::uint64_t>(building.index), place));
    model.graph = buildWalkGraph(model.plan, building, level,
                                 static_cast<int>(venue_.options.spacing) * metrePx);
    openShops(building, model);
  }

  // Names the floor's shops and tells them their doors.
  void openShops(const BuildingPlan& building, FloorModel& model) {
    int unit = 0;
    for (Room& room : model.plan.rooms) {
      if (room.kind == RoomKind::shop || room.kind == RoomKind::anchor) {
        room.shop = tenantOf(building, model, room.kind, ++unit);
      }
    }
    const auto floorIndex = static_cast<int>(venue_.floors.size()) - 1;
    for (std::size_t i = 0; i < model.graph.nodes.size(); ++i) {
      const Node& node = model.graph.nodes[i];
      if (node.kind != NodeKind::shop) continue;
      const int shop = model.plan.rooms[static_cast<std::size_t>(node.room)].shop;
      venue_.shops[static_cast<std::size_t>(shop)].doors.push_back(
          {floorIndex, static_cast<int>(i)});
    }
  }

  // The first large shop of the first building's ground floor goes on above it.
  int tenantOf(const BuildingPlan& building, const FloorModel& model, RoomKind kind, int unit) {
    if (model.level == 1 && unit == 1 && sharedAnchor_ >= 0) return sharedAnchor_;
    const auto shop = static_cast<int>(venue_.shops.size());
    const bool spans = building.index == 0 && model.level == 0 && unit == 1 && building.hasLevel(1);
    if (spans) sharedAnchor_ = shop;
    const Zone zone = zoneOf(building, model.level);
    const std::string number = std::to_string(unit);
    venue_.shops.push_back(
        {kind == RoomKind::anchor ? names_.nextAnchor(zone) : names_.nextShop(zone),
         model.code + (unit < 10 ? "-0" : "-") + number,
         {}});
    return shop;
  }

  // Each half of a two-way connector is listed on the map that it leaves: a search that starts
  // there looks for it there.
  void leave(NodeRef from, NodeRef to, PathKind kind, const std::string& name) {
    const bool up = floor(from.floor).level < floor(to.floor).level;
    floor(from.floor).paths.push_back({from, to, kind, up ? 1 : 2, name});
  }

  // A lift goes to every other floor without a stop between.
  void joinLifts(int index, int first, int count) {
    const std::vector<int>& lifts = floor(index).graph.lifts;
    for (std::size_t i = 0; i < lifts.size(); ++i) {
      const std::string name = "Lift " + std::to_string(i + 1);
      for (int other = first; other < first + count; ++other) {
        if (other == index) continue;
        leave({index, lifts[i]}, {other, floor(other).graph.lifts[i]}, PathKind::lift, name);
      }
    }
  }

  void joinStairs(int index) {
    for (std::size_t i = 0; i < floor(index).graph.stairs.size(); ++i) {
      const NodeRef lower{index, floor(index).graph.stairs[i]};
      const NodeRef upper{index + 1, floor(index + 1).graph.stairs[i]};
      const std::string name = "Stairs " + std::to_string(i + 1);
      leave(lower, upper, PathKind::stairs, name);
      leave(upper, lower, PathKind::stairs, name);
    }
  }

  void joinEscalators(int index) {
    for (std::size_t i = 0; i < floor(index).graph.escalators.size(); ++i) {
      const EscalatorEnds& lower = floor(index).graph.escalators[i];
      const EscalatorEnds& upper = floor(index + 1).graph.escalators[i];
      const std::string name = "Escalator " + std::to_string(i + 1);
      leave({index, lower.upFoot}, {index + 1, upper.upHead}, PathKind::escalator, name + " up");
      leave({index + 1, upper.downHead}, {index, lower.downFoot}, PathKind::escalator,
            name + " down");
    }
  }

  // The floor of the building at a level, and its main gate on a side.
  NodeRef gateOf(int building, int level, Side side) {
    const BuildingPlan& plan = venue_.site.buildings[static_cast<std::size_t>(building)];
    const int index = firstFloors_[static_cast<std::size_t>(building)] + level - plan.lowestLevel;
    const std::vector<Gate>& gates = floor(index).plan.gates;
    const auto gate = std::find_if(gates.begin(), gates.end(), [side](const Gate& candidate) {
      return candidate.side == side && candidate.main;
    });
    return {index, floor(index).graph.gates[static_cast<std::size_t>(gate - gates.begin())]};
  }

  // A walk in the open on the ground, a bridge on the level above it.
  void joinBuildings(const BuildingLink& link) {
    for (int level : {0, 1}) {
      const auto has = [&](int building) {
        return venue_.site.buildings[static_cast<std::size_t>(building)].hasLevel(level);
      };
      if (!has(link.first) || !has(link.second)) continue;
      const NodeRef from = gateOf(link.first, level, link.northSouth ? Side::south : Side::east);
      const NodeRef to = gateOf(link.second, level, link.northSouth ? Side::north : Side::west);
      floor(from.floor)
          .paths.push_back({from, to, PathKind::walk, 0, level == 0 ? "Walk" : "Bridge"});
    }
  }

  void numberIds() {
    std::size_t most = 0;
    int tallest = 1;
    for (const FloorModel& model : venue_.floors) {
      const std::size_t paths = model.graph.links.size() + model.paths.size();
      most = std::max({most, model.graph.nodes.size(), paths});
    }
    for (const BuildingPlan& building : venue_.site.buildings) {
      tallest = std::max(tallest, building.floors);
    }
    while (venue_.idsPerMap <= static_cast<std::int64_t>(most)) venue_.idsPerMap *= 10;
    for (FloorModel& model : venue_.floors) {
      const BuildingPlan& building =
          venue_.site.buildings[static_cast<std::size_t>(model.building)];
      model.mapId =
          (building.index + 1) * factorFor(tallest) + model.level - building.lowestLevel + 1;
      model.floorId = model.mapId + 100 * factorFor(tallest);
    }
  }

  VenueModel venue_;
  ShopNames names_;
  std::vector<int> firstFloors_;
  // The shop that has rooms on two floors of the building being added, or -1.
  int sharedAnchor_ = -1;
};

VenueModel plan(GenerateOptions options, std::int64_t shops) {
  options.shops = shops;
  return VenuePlanner(options).plan();
}

// The number of waypoints grows with the number of shops in a nearly straight line, with a jump
// where the buildings get another passage; a few steps along it, kept between what was too few and
// what was too many, come near enough.
PlannedVenue planForWaypoints(const GenerateOptions& options) {
  const std::int64_t wanted = *options.waypoints;
  const std::int64_t bare = plan(options, 1).waypointCount();
  if (wanted < bare) {
    return {{},
            "--waypoints: " + std::to_string(wanted) + " is too few for " +
                std::to_string(options.buildings) + " buildings of " +
                std::to_string(options.floors) + " floors, at least " + std::to_string(bare)};
  }
  const auto offBy = [&](std::int64_t count) { return std::abs(count - wanted); };
  std::int64_t tooFew = 0;
  std::int64_t tooMany = shopRange.most + 1;
  std::int64_t shops = std::clamp((wanted - bare) / 3, shopRange.least, shopRange.most);
  VenueModel best = plan(options, shops);
  std::int64_t count = best.waypointCount();
  for (int step = 0; step < 8 && offBy(best.waypointCount()) > wanted / 200; ++step) {
    (count < wanted ? tooFew : tooMany) = shops;
    if (tooMany - tooFew < 2) break;
    const std::int64_t perHundred = std::max<std::int64_t>(100, (count - bare) * 100 / shops);
    shops += (wanted - count) * 100 / perHundred;
    if (shops <= tooFew || shops >= tooMany) shops = tooFew + (tooMany - tooFew) / 2;
    VenueModel next = plan(options, shops);
    count = next.waypointCount();
    if (offBy(count) < offBy(best.waypointCount())) best = std::move(next);
  }
  return {std::move(best), std::nullopt};
}

// The entrance on the ground that lies furthest to the west or to the east. Where all lie on one
// line these are two different ones.
NodeRef entranceOf(const VenueModel& venue, bool isWest) {
  NodeRef found{-1, -1};
  int foundX = 0;
  for (std::size_t i = 0; i < venue.floors.size(); ++i) {
    const FloorModel& floor = venue.floors[i];
    if (floor.level != 0) continue;
    for (std::size_t j = 0; j < floor.graph.nodes.size(); ++j) {
      const Node& node = floor.graph.nodes[j];
      if (node.kind != NodeKind::entrance) continue;
      if (found.floor >= 0 && (isWest ? node.at.x >= foundX : node.at.x < foundX)) continue;
      found = {static_cast<int>(i), static_cast<int>(j)};
      foundX = node.at.x;
    }
  }
  return found;
}

void join(VenueModel& west, VenueModel& east) {
  const NodeRef out = entranceOf(west, false);
  const NodeRef in = entranceOf(east, true);
  west.exits.push_back({out, east.options.venue, east.waypointId(in)});
  east.exits.push_back({in, west.options.venue, west.waypointId(out)});
}

constexpr int gapBetweenVenuesPx = 20 * metrePx;

// Side by side in the city of the first, with ids of their own.
void arrange(std::vector<VenueModel>& venues) {
  std::int64_t mapIds = 1;
  std::int64_t idsPerMap = 1;
  for (const VenueModel& venue : venues) {
    for (const FloorModel& floor : venue.floors) {
      while (mapIds <= floor.mapId) mapIds *= 10;
    }
    idsPerMap = std::max(idsPerMap, venue.idsPerMap);
  }
  for (std::size_t i = 1; i < venues.size(); ++i) {
    VenueModel& venue = venues[i];
    const VenueModel& before = venues[i - 1];
    venue.city = before.city;
    venue.eastPx = before.eastPx + before.site.widthPx + gapBetweenVenuesPx;
  }
  for (std::size_t i = 0; i < venues.size(); ++i) {
    venues[i].idsPerMap = idsPerMap;
    for (FloorModel& floor : venues[i].floors) {
      floor.mapId += static_cast<std::int64_t>(i) * mapIds;
      // Beyond the ids of the floors of the venues before.
      floor.floorId += static_cast<std::int64_t>(i) * mapIds;
    }
  }
  for (std::size_t i = 1; i < venues.size(); ++i) join(venues[i - 1], venues[i]);
}

}  // namespace

std::int64_t VenueModel::waypointId(NodeRef ref) const {
  return floors[static_cast<std::size_t>(ref.floor)].mapId * idsPerMap + ref.node + 1;
}

std::int64_t VenueModel::waypointCount() const {
  std::int64_t count = 0;
  for (const FloorModel& floor : floors)
    count += static_cast<std::int64_t>(floor.graph.nodes.size());
  return count;
}

PlannedVenue planVenue(const GenerateOptions& options) {
  if (auto error = validate(options)) return {{}, error};
  if (options.waypoints) return planForWaypoints(options);
  return {plan(options, options.shops), std::nullopt};
}

PlannedVenues planVenues(const GenerateOptions& options) {
  PlannedVenues planned;
  for (std::int64_t i = 0; i < options.venues; ++i) {
    GenerateOptions own = options;
    own.venue += i;
    own.seed += static_cast<std::uint64_t>(i);
    PlannedVenue venue = planVenue(own);
    if (venue.error) return {{}, std::move(venue.error)};
    planned.venues.push_back(std::move(venue.venue));
  }
  if (options.venues > 1) arrange(planned.venues);
  // No range of the options lets one venue go beyond 32 bits; many of them may.
  constexpr std::int64_t largestId = 2'147'483'647;
  for (const VenueModel& venue : planned.venues) {
    if ((venue.floors.back().mapId + 1) * venue.idsPerMap > largestId) {
      return {{}, "--venues: so many venues of this size need ids of more than 32 bits"};
    }
  }
  if (planned.venues.empty()) planned.error = validate(options);
  return planned;
}

}  // namespace tern::generate
