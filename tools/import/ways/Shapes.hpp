// Areas made of areas: smaller, larger, put together, cut. What GEOS computes, in our own polygons.
//
// Corners are mitred, so that an area shrunk and widened again is itself but for its necks, and a
// corner stays one corner. Outlines come out counter-clockwise as seen with y downward on a screen
// turned (their cross products are positive), holes the other way round, without points that lie on
// the line between their neighbours.
//
// Ownership: plain values. Threads: free functions.
// Fails: what GEOS cannot compute is empty.
#pragma once

#include <vector>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

using Shapes = std::vector<Polygon>;

// The same area by rings that do not cross themselves nor each other.
Shapes repaired(const Shapes& shapes);
// What lies farther than so many metres from the area's edge.
Shapes shrunk(const Shapes& shapes, double metres);
// All that is nearer than so many metres to the area.
Shapes widened(const Shapes& shapes, double metres);
Shapes joined(const Shapes& a, const Shapes& b);
Shapes cut(const Shapes& from, const Shapes& what);
Shapes common(const Shapes& a, const Shapes& b);
// With fewer points, none farther than so many metres from where the edge was.
Shapes simplified(const Shapes& shapes, double metres);

}  // namespace tern::imports
