// The map of one stop of a route: the floor's drawing, the route over it, its ends and what they
// are called.
//
// Ownership: borrows the visits and the drawing, which must outlive the call.
// Threads: free functions.
// Fails: never.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tools/tern/picture/FloorCanvas.hpp"
#include "tools/tern/picture/FloorDrawings.hpp"
#include "tools/tern/picture/FloorNames.hpp"
#include "tools/tern/picture/Itinerary.hpp"

namespace tern::picture {

struct FloorPanel {
  const FloorVisit* visit = nullptr;
  const FloorDrawing* drawing = nullptr;
  // Of every id in the panel: letters, digits and -.
  std::string idPrefix;
  // Other stretches on the same map, drawn faintly.
  std::vector<const FloorVisit*> others = {};
  // What the ends are called; empty where the route neither begins nor ends.
  std::string start = {};
  std::string goal = {};
  // Names to write where they have room; may be null.
  const std::vector<PlaceName>* names = nullptr;
  // Ids of the destinations among them that the route is told by.
  std::set<std::int64_t> landmarks = {};
  // See CanvasRequest.
  const FloorDrawing* ghost = nullptr;
  // The point that was asked from, in map units, where the way begins at what is closest to it.
  std::optional<Point> asked = std::nullopt;
};

// REQUIRES: a visit and a drawing.
PanelDrawing drawFloor(const FloorPanel& panel);

// The panel in words: "Start at Juniper Bakery. Walk 120 m. Lift up to First floor."
std::string inWords(const FloorPanel& panel);

}  // namespace tern::picture
