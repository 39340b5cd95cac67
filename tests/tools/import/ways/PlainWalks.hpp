// Walks found by the plainest means, to hold those of the import against: everything is looked at,
// nothing sorted beforehand.
//
// Ownership: plain values. Threads: free functions. Fails: never.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "tools/import/ways/Sight.hpp"

namespace tern::imports {

// By node and node, in metres; endless where there is no way.
using Lengths = std::vector<std::vector<double>>;

// Whether the way cuts through a side of the area.
bool cutsWall(const Polygon& area, Point from, Point to);

// Shortest walks over the ways from each of the first `stops` nodes to each node.
Lengths walks(std::size_t nodes, std::span<const StraightWay> ways, std::size_t stops);

// Between the points, as the crow walks: over all inner corners of the area.
Lengths geodesics(const Polygon& area, std::span<const Point> points);

// The same between the first `stops` of the points through several areas, from one to another by
// the steps, whose ends are points.
Lengths geodesics(std::span<const Polygon> areas, std::span<const StraightWay> steps,
                  std::span<const Point> points, std::size_t stops);

}  // namespace tern::imports
