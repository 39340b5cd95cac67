// From areas to ways: makes the nodes and links of a building that is known by its rooms, corridors
// and doors alone, and puts them into its draft.
//
// Doors join the areas on their two sides; a wide one is crossed in several places. What is walked
// within stairs, lifts or on escalators is of their kind. Those that lie above each other are
// joined, also past a level between.
//
//   Site site;
//   site.areas = {hall, shop};
//   site.doors = {door};
//   const MadeWays made = makeWays(site, draft);
//   made.insideDoors[1];  // from where the shop is reached
//
// Ownership: plain values. Threads: free functions.
// Fails: what cannot be joined is told of in the draft.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

// Where one may walk.
struct SiteArea {
  std::string id;
  std::size_t floor = 0;
  // How one moves in it; stairs, escalators and lifts lead to those that lie above and below.
  LinkKind kind = LinkKind::walkway;
  bool hasSteps = false;
  std::vector<Polygon> shapes;
  // What the source calls it, where that is not the id: on several levels it is one record.
  std::string record = {};
};

inline const std::string& recordOf(const SiteArea& area) {
  return area.record.empty() ? area.id : area.record;
}

// How far beside a door its areas are looked for; walls may be drawn as gaps.
inline constexpr double besideDoorMetres[] = {0.05, 0.15, 0.3, 0.6};

struct SiteDoor {
  std::string id;
  std::size_t floor = 0;
  // On the edge between two areas, or on the edge of one: then it leads out.
  Line line;
};

// A point that ways shall lead to.
struct SiteStand {
  std::string id;
  std::size_t floor = 0;
  Point at;
};

// Two areas of different levels of which the source says itself how they are joined.
struct SiteMover {
  std::string id;
  std::size_t from = 0;
  std::size_t to = 0;
  LinkKind kind = LinkKind::stairs;
  Direction direction = Direction::both;
};

struct Site {
  std::vector<SiteArea> areas;
  std::vector<SiteDoor> doors;
  // Drawn, and closed: what has no others is entered by none that is made up, either.
  std::vector<SiteDoor> shutDoors;
  std::vector<SiteStand> stands;
  std::vector<SiteMover> movers;
};

struct MadeWays {
  // Of each area the nodes a step inside of its doors.
  std::vector<std::vector<std::size_t>> insideDoors;
  // Of each door the nodes that one goes through it by; none where no area is near.
  std::vector<std::vector<std::size_t>> ofDoor;
  // Of each stand its node; none where no area is near.
  std::vector<std::optional<std::size_t>> ofStand;
};

MadeWays makeWays(const Site& site, Draft& draft);

}  // namespace tern::imports
