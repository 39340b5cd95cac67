// Where a line that is walked turns, as a person would say it.
//
// Small wiggles are taken out first, by the Douglas-Peucker algorithm (D. H. Douglas, T. K.
// Peucker: Algorithms for the reduction of the number of points required to represent a digitized
// line, Cartographica 10, 1973), which is the same for the line's mirror image. What bends the same
// way within a few metres is one turn, such as a corner that is cut; so are any turns closer
// together than a person tells apart.
//
// Threads: any. Fails: never.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::inline v5::detail {

struct LineTurn {
  // Index of the line's point.
  std::size_t point = 0;
  // From -180 to 180; to the right above 0.
  double degrees = 0;
  friend bool operator==(const LineTurn&, const LineTurn&) = default;
};

// Turns closer together than this are one. Metres.
inline constexpr double tellableApart = 3;
// What turns less is straight on. Degrees.
inline constexpr double leastTurn = 30;

// How far it turns from one direction to the next, both (x to the right, y down).
double degreesBetween(TernCoordinate before, TernCoordinate after);

// The turns of a line in metres, y down, in its order. At `decisions`, ascending indices of inner
// points, ways part: there a bend is a turn that is straight on elsewhere.
std::vector<LineTurn> turnsOf(std::span<const TernCoordinate> line,
                              std::span<const std::size_t> decisions = {});

}  // namespace tern::detail
