// A draft as the venue that it becomes: every record with its id and the numbers that the documents
// will carry.
//
// Levels are the ranks of the ordinals, with the ground at 0. A bend of a way on one floor becomes
// a waypoint; what leads to another floor is one path. Destinations of one name are one record, and
// so are amenities of one category.
//
// Ownership: a plain value; the draft is borrowed and must outlive it.
// Threads: one caller at a time.
// Fails: never: what cannot come through is told of.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/write/IdTable.hpp"
#include "tools/import/write/Placement.hpp"

namespace tern::imports {

// What the caller of an import may say of a venue.
struct VenueWishes {
  // Empty: that of the source.
  std::string name = {};
  // Of the records' own names; empty: that of most names in the source.
  std::string language = {};
  // What all venues of a source of several are called together; the id of each then follows from
  // the source's id of it. None: there is a single venue, which has the id 1.
  std::optional<std::string> customer = {};
};

struct PlannedFloor {
  std::int64_t id = 0;
  std::int64_t mapId = 0;
  int level = 0;
};

struct PlannedWaypoint {
  std::int64_t id = 0;
  std::string externalId;
  std::size_t floor = 0;
  // In map units.
  Point at;
  // Ids.
  std::vector<std::int64_t> destinations;
  std::vector<std::int64_t> amenities;
};

struct PlannedPath {
  std::int64_t id = 0;
  std::string externalId;
  int pathType = 0;
  // 0 both ways, 1 only upward, 2 only downward.
  int direction = 0;
  // Waypoints by their place in the list.
  std::size_t from = 0;
  std::size_t to = 0;
  // Whose details it carries.
  std::size_t link = 0;
};

// A destination or an amenity.
struct PlannedPlace {
  std::int64_t id = 0;
  std::string externalId;
  std::size_t category = 0;
  Names names;
  std::vector<std::size_t> waypoints;
  // The draft's places that it is made of.
  std::vector<std::size_t> places;
  // Of all of them, each once.
  std::vector<std::string> keywords = {};
};

struct VenuePlan {
  const Draft* draft = nullptr;
  std::int64_t id = 0;
  std::string name;
  std::string language;
  std::int64_t generatedAt = 0;
  Placement placement;
  // In the order of the draft's.
  std::vector<std::int64_t> buildingIds;
  std::vector<std::int64_t> categoryIds;
  std::vector<PlannedFloor> floors;
  // The nodes of the draft in their order, then the bends.
  std::vector<PlannedWaypoint> waypoints;
  std::vector<PlannedPath> paths;
  std::vector<PlannedPlace> destinations;
  std::vector<PlannedPlace> amenities;
  // The source's links, by kind.
  std::array<int, linkKindCount> kinds{};
  Oddities oddities;
};

// The source's id as an external id: with "%3A" for a colon, which the library takes as the mark
// between a venue and a waypoint in it.
std::string externalIdOf(std::string_view sourceId);

VenuePlan planVenue(const Draft& draft, const VenueWishes& wishes, IdTable& ids);

}  // namespace tern::imports
