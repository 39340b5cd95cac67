// A building as a reader of open data found it, before it becomes a venue: plain data, with the
// source's own ids. Every reader fills one, and one writer makes a venue of it.
//
// Places in the lists name each other: a node names its floor by the floor's index, and so on.
//
// Ownership: a plain value.
// Threads: plain values.
// Fails: never.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/draft/LocalPlane.hpp"
#include "tools/import/draft/Names.hpp"
#include "tools/import/draft/Oddities.hpp"

namespace tern::imports {

using Line = std::vector<Point>;

// The outline and what is cut out of it, each closed: its last point is the one before its first.
struct Polygon {
  std::vector<Line> rings;
};

struct DraftBuilding {
  std::string id;
  Names names;
  std::string address;
};

struct DraftFloor {
  std::string id;
  std::size_t building = 0;
  // Its place among the floors: 0 is the ground, 1 the floor above, -0.5 half a floor down.
  double ordinal = 0;
  // As the signs in the building have it; empty where the source does not say.
  Names names;
  Names shortNames;
  std::vector<Polygon> shapes;
};

struct DraftNode {
  std::string id;
  std::size_t floor = 0;
  Point at;
  // Where the source says, beside the place on the plane, that it lies on the globe.
  std::optional<LonLat> globe;
  // A way into the building.
  bool isEntrance = false;
};

enum class LinkKind {
  walkway,
  ramp,
  stairs,
  escalator,
  lift,
  stepFreeLift,
  movingWalkway,
  gate,
  unknown
};
inline constexpr std::size_t linkKindCount = 9;

enum class Direction { both, forward, backward };

struct DraftLink {
  std::string id;
  std::size_t from = 0;
  std::size_t to = 0;
  LinkKind kind = LinkKind::walkway;
  Direction direction = Direction::both;
  // The points of its line between the ends.
  Line bends;
  // Steps within what is otherwise walked.
  bool hasSteps = false;
  // Steeper than what a ramp may be without a word.
  bool isSteep = false;
  // How many of the source's it is: the way there and the way back may be one each.
  int records = 1;
  // Made of an area, which is drawn itself.
  bool isWithinArea = false;
  // What else the source says of it, as an application may want it: "width", "steps", ...
  Value details = Value::map();
};

enum class AreaKind { room, shop, toilets, way, mover, outdoors, closed };

struct DraftArea {
  std::string id;
  std::size_t floor = 0;
  AreaKind kind = AreaKind::room;
  Names names;
  std::vector<Polygon> shapes;
};

struct DraftLine {
  std::size_t floor = 0;
  Line line;
};

struct DraftCategory {
  std::string id;
  Names names;
};

// One place of a destination or an amenity. In the venue destinations of one name are one record,
// wherever they lie, and so are amenities of one category.
struct DraftPlace {
  std::string id;
  std::size_t category = 0;
  // Empty for an amenity, which is called by its category.
  Names names;
  std::size_t floor = 0;
  Point at;
  // From which it is reached; at least one.
  std::vector<std::size_t> nodes;
  // What else it is found by: a room's number.
  std::vector<std::string> keywords = {};
};

struct Draft {
  std::string id;
  Names names;
  // That of most names.
  std::string language;
  LocalPlane plane;
  // Differs with every change of the source.
  std::uint64_t stamp = 0;

  std::vector<DraftBuilding> buildings;
  std::vector<DraftFloor> floors;
  std::vector<DraftNode> nodes;
  std::vector<DraftLink> links;
  std::vector<DraftArea> areas;
  std::vector<DraftLine> walls;
  // What else is drawn as lines: markings, kerbs, equipment. They keep nobody from walking.
  std::vector<DraftLine> marks;
  std::vector<DraftLine> doors;
  std::vector<DraftCategory> categories;
  std::vector<DraftPlace> places;
  Oddities oddities;
};

}  // namespace tern::imports
