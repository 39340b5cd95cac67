// The places that somebody sees on the way: destinations with names, at the doors that the venue
// knows.
//
// Ownership: names are copies. Threads: any, after it is made, which reads the venue's records.
// Fails: never.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "TernCoreKit/guidance/Landmark.hpp"
#include "TernCoreKit/guidance/detail/WalkedRoute.hpp"

namespace tern::inline v5::detail {

struct Landmark {
  std::int64_t id = 0;
  std::string name;
  std::vector<TernCoordinate> doors;
};

// How a landmark tells where to turn.
struct SeenLandmark {
  const Landmark* landmark = nullptr;
  // Passed before the turn, on that side; else right at it.
  bool isPassed = false;
  bool isOnTheRight = false;
};

class Landmarks {
 public:
  // Of one map. REQUIRES: the caller holds the venue's `recordsMutex`.
  explicit Landmarks(const MapPlace& place);

  // The one by which somebody who has walked along the line knows its end: near it, else one passed
  // shortly before it. Neither the one that was told last nor the goal. REQUIRES: a point.
  std::optional<SeenLandmark> atEnd(std::span<const TernCoordinate> line,
                                    std::optional<std::int64_t> told,
                                    std::optional<std::int64_t> goal) const;

 private:
  std::vector<Landmark> all_;
};

// What `landmarkNear` finds. REQUIRES: the caller holds the venue's `recordsMutex`.
const TernDestination* destinationNear(const TernVenueData& venue, const TernWaypoint& waypoint);

}  // namespace tern::detail
