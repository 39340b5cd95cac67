// What it costs to go from one point to the next.
#pragma once

#include <cstdint>
#include <optional>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5::detail {

// The path type whose links cost their length.
inline constexpr std::int64_t walkingType = 1;

// Where a waypoint lies, as far as costs read it.
struct FloorPoint {
  float x = 0;  // map units, or metres between venues
  float y = 0;
  float z = 0;                  // map units
  std::int32_t multiplier = 1;  // what the floor's preference makes of level links that lead here
};

// What the costs read of a path and its type.
struct Passage {
  bool isWalking = false;
  std::int64_t direction = 0;
  float weight = 0;
  float verticalWeight = 0;
};

struct LinkCost {
  float cost = 0;
  float distance = 0;  // map units of a walk, else 1
};

// The straight line between two points; computed in double precision.
float straightLine(const FloorPoint& a, const FloorPoint& b);

// None where the passage does not lead from the one height to the other.
std::optional<LinkCost> linkCost(const FloorPoint& from, const FloorPoint& to,
                                 const Passage& passage);

}  // namespace tern::detail
