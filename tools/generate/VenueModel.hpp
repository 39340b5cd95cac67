// A whole synthetic venue before it is written: every floor with its rooms and waypoints, the shops
// with their names, and the numbers that the documents will carry.
//
// Memory grows with the number of waypoints, by about two hundred bytes each.
// Threads: `planVenue` is a free function; the model may be read from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/generate/FloorPlan.hpp"
#include "tools/generate/GenerateOptions.hpp"
#include "tools/generate/ShopNames.hpp"
#include "tools/generate/SitePlan.hpp"
#include "tools/generate/WalkGraph.hpp"

namespace tern::generate {

// The ids of the path types. The library takes type 1 as the one whose length counts.
enum class PathKind { walk = 1, lift = 2, escalator = 3, stairs = 4 };

// A waypoint of the venue: the place of its floor in the model and of its node on that floor.
struct NodeRef {
  int floor;
  int node;
};

// A path as its document has it; it is listed on the map of its first waypoint.
struct VenuePath {
  NodeRef from;
  NodeRef to;
  PathKind kind = PathKind::walk;
  // 0 both ways, 1 only upward, 2 only downward.
  int direction = 0;
  std::string name;
};

struct FloorModel {
  int building = 0;
  int level = 0;
  std::int64_t mapId = 0;
  std::int64_t floorId = 0;
  // "A-G", the beginning of every external id on the floor.
  std::string code;
  FloorPlan plan;
  WalkGraph graph;
  // What leads to other maps; the walks of the floor itself are the graph's links.
  std::vector<VenuePath> paths;
};

struct Shop {
  ShopName name;
  std::string unit;
  // The rooms' doors, floor by floor.
  std::vector<NodeRef> doors;
};

// A way out into another venue.
struct VenueExit {
  NodeRef at;
  std::int64_t venue = 0;
  // The waypoint that it joins there.
  std::int64_t waypoint = 0;
};

struct VenueModel {
  GenerateOptions options;
  std::string name;
  int city = 0;
  // How far the site lies east of the city's first one.
  std::int64_t eastPx = 0;
  SitePlan site;
  // Building by building, each from its lowest floor.
  std::vector<FloorModel> floors;
  std::vector<Shop> shops;
  // Of joined venues.
  std::vector<VenueExit> exits;
  // Waypoints and paths of a map are numbered from its id times this. The ranges of the options
  // keep every id within 32 bits: two million shops on one floor at the closest spacing end below
  // 12 * 10^8.
  std::int64_t idsPerMap = 1000;
  // Changes with the options, so that a cached copy of another venue counts as out of date.
  std::int64_t generatedAt = 0;

  std::int64_t waypointId(NodeRef ref) const;
  std::int64_t waypointCount() const;
  bool isJoined() const { return options.venues > 1; }
};

// `error` is set, and names the option, when the venue that was asked for cannot be.
struct [[nodiscard]] PlannedVenue {
  VenueModel venue;
  std::optional<std::string> error;
};

PlannedVenue planVenue(const GenerateOptions& options);

struct [[nodiscard]] PlannedVenues {
  std::vector<VenueModel> venues;
  std::optional<std::string> error;
};

// All of the venues that are asked for. The ids of their maps, waypoints, paths and floors are
// unique among them.
PlannedVenues planVenues(const GenerateOptions& options);

}  // namespace tern::generate
