// Where a venue's buildings stand on their site, how large they are and what joins them.
//
// A building is a stack of equal floors. A floor has one or more concourses running west to east, a
// rank of shops on either side of each, and passages that cross all of them from façade to façade.
// Where a passage meets the main concourse there is a court with the escalators, and beside it the
// lifts, stairs and toilets. Whatever leads to another floor stands at one place on all floors.
//
//     +------+-----+----+   +----+-----+------+
//     |      | shop|lift| p |  wc| shop| shop |     one concourse,
//     |anchor+-----+----+ a +----+-----+------+     one passage,
//     |      :  main concourse, court         :     open to the east
//     |      +-----+----+ s +----+-----+------+
//     |      | shop|lift| s |info| shop| shop |
//     +------+-----+----+   +----+-----+------+
//
// Threads: free functions and plain values. Lengths are in pixels.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/generate/Shapes.hpp"

namespace tern::generate {

inline constexpr int rankDepthPx = 14 * metrePx;
inline constexpr int concourseWidthPx = 13 * metrePx;
inline constexpr int passageWidthPx = 8 * metrePx;
// Lifts, stairs and toilets stand in strips of this width on both sides of a passage.
inline constexpr int serviceWidthPx = 6 * metrePx;
// The depth of the rooms at the ends of a concourse.
inline constexpr int endDepthPx = 19 * metrePx;
inline constexpr int rowHeightPx = concourseWidthPx + 2 * rankDepthPx;

struct BuildingPlan {
  int index = 0;
  Box footprint;
  int floors = 1;
  int lowestLevel = 0;
  int concourses = 1;
  // The middle lines of the passages, west to east; an odd number of them.
  std::vector<int> crossings;
  // Whether the main concourse runs out to the façade on that side or ends at a large shop.
  bool openWest = false;
  bool openEast = false;
  // Destinations on each floor, from the lowest.
  std::vector<int> shops;

  int highestLevel() const { return lowestLevel + floors - 1; }
  bool hasLevel(int level) const { return level >= lowestLevel && level <= highestLevel(); }
  int mainConcourse() const { return concourses / 2; }
  int rowTop(int row) const { return footprint.top + row * rowHeightPx; }
  int concourseY(int row) const { return rowTop(row) + rowHeightPx / 2; }
  int middleCrossing() const { return crossings[crossings.size() / 2]; }
};

// Two neighbours: `first` lies west or north of `second`.
struct BuildingLink {
  int first;
  int second;
  bool northSouth;
};

struct SitePlan {
  int widthPx = 0;
  int heightPx = 0;
  std::vector<BuildingPlan> buildings;
  std::vector<BuildingLink> links;
};

// REQUIRES: every number at least 1.
SitePlan planSite(int buildings, int floors, std::int64_t shops);

}  // namespace tern::generate
