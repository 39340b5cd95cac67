// What the tags of OpenStreetMap mean for a venue: Simple Indoor Tagging, and what is tagged on
// ways that people walk.
//
// Ownership: plain values. Threads: free functions over constants. Fails: never.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/osm/OsmData.hpp"

namespace tern::imports {

struct OsmAreaMeaning {
  AreaKind drawn = AreaKind::room;
  // How one moves in it.
  LinkKind link = LinkKind::walkway;
  // Corridors and open areas are not: they are one with what is open beside them.
  bool isWalled = true;
  bool isWalked = true;
  // Outdoors, beside buildings.
  bool isGround = false;
};

// Of an outline; none where the tags are about no room, corridor or the like.
std::optional<OsmAreaMeaning> osmAreaMeaning(const OsmTags& tags);
// What is drawn within is a lift's cabin, whatever else it is called.
OsmAreaMeaning osmLiftMeaning(const OsmTags& tags);

struct OsmWalkMeaning {
  LinkKind kind = LinkKind::walkway;
  Direction direction = Direction::both;
  bool hasSteps = false;
  bool isSteep = false;
  // The line rises from its first node to its last one, or falls.
  std::optional<bool> rises;
};

// Of a line; none for what nobody walks along.
std::optional<OsmWalkMeaning> osmWalkMeaning(const OsmTags& tags);
// Width, steps, slope and the like, as the source has them.
Value osmDetails(const OsmTags& tags);

// Closed to the public, as access=no and access=private say, unless foot=* says that one may walk.
bool isOsmBarred(const OsmTags& tags);
// What stands in the way: walls, fences, columns.
bool isOsmWall(const OsmTags& tags);
bool isOsmColumn(const OsmTags& tags);
bool isOsmDoor(const OsmTags& tags);
bool isOsmEntrance(const OsmTags& tags);
bool isOsmLift(const OsmTags& tags);
// A node of a way that one has to step over.
bool isOsmStep(const OsmTags& tags);
double osmDoorMetres(const OsmTags& tags);
// Squares, and what a mall or a campus lies on, without a level: if it is beside the building, one
// walks there from entrance to entrance.
bool isOsmGround(const OsmTags& tags);
bool isOsmRoof(const OsmTags& tags);
// Some outline of an area that need not be walked: highway=footway with area=yes, a platform.
bool isOsmOutline(const OsmTags& tags);

// In all its languages; the number of a room that has no name.
Names osmNames(const OsmTags& tags);
// What else it is found by: the number of a room that has a name, too.
std::vector<std::string> osmKeywords(const OsmTags& tags);
// Of what somebody may want to go to; empty for what is nothing of the kind.
std::string osmCategory(const OsmTags& tags);
// What `toilets:wheelchair` says, else `wheelchair`.
bool isOsmToiletsForWheelchairs(const OsmTags& tags);
// Whether one of the kind is as good as another: toilets, cash machines.
bool isOsmFacility(std::string_view category);

}  // namespace tern::imports
