// Where the maps of a venue lie: on the plane of the draft, which every map shows the same piece
// of, and on the globe.
//
// Ownership: plain values. Threads: free functions. Fails: never.
#pragma once

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

struct Placement {
  // Of the top left corner, on the plane.
  Point corner;
  // The length of a map unit. It doubles until the map is small enough for what draws it.
  int mmPerPixel = 50;
  // Whole map units.
  int widthPx = 1;
  int heightPx = 1;
  LonLat topLeft;
  LonLat bottomRight;
  // How far the map and the source are apart on the globe, in metres, at the worst node.
  double residual = 0;

  // In map units.
  Point onMap(Point at) const {
    return {(at.x - corner.x) * pxPerMetre(), (at.y - corner.y) * pxPerMetre()};
  }
  double pxPerMetre() const { return 1000.0 / mmPerPixel; }
};

// A frame around all that is drawn, and its corners by least squares over the nodes that say where
// on the globe they lie. A node that says so far from where it is drawn is told of and not counted.
Placement placementOf(const Draft& draft, Oddities& told);

}  // namespace tern::imports
