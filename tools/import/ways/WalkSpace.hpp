// Where in an area a person's middle can be: half a person's width from the walls and, in necks
// that are too narrow for that, as far from them as the neck allows, down to nothing. So what hangs
// together in the area hangs together still, and each door and place can be reached.
//
// Ownership: plain values. Threads: a free function. Fails: never; what is no area has no space.
#pragma once

#include <optional>
#include <span>

#include "tools/import/ways/Shapes.hpp"
#include "tools/import/ways/WallGrid.hpp"

namespace tern::imports {

inline constexpr double halfPersonMetres = 0.35;

// Of one area in one piece, repaired. `stops` are its doors and places; those beside it are let be.
Shapes walkSpaceOf(const Polygon& area, std::span<const Point> stops);

// Where one stands who came from the point into the space: the nearest point of it that no wall of
// the area, which `walls` are, lies before. None where there is none.
std::optional<Point> stepInside(const Shapes& space, const WallGrid& walls, Point from);

}  // namespace tern::imports
