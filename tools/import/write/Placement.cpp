#include "tools/import/write/Placement.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::imports {

namespace {

constexpr double marginMetres = 5;
// What a node may lie off before it counts as another place.
constexpr double mostOffMetres = 1;

// Two numbers that belong together, along one axis.
struct Pair {
  double at;
  double value;
};

struct Fit {
  double offset;
  double slope;
  double of(double at) const { return offset + slope * at; }
};

// The line through the pairs with the least sum of squares; with `slope` given where the pairs are
// too close together to say.
Fit fitOf(const std::vector<Pair>& pairs, double slope) {
  double at = 0;
  double value = 0;
  for (const Pair& pair : pairs) {
    at += pair.at;
    value += pair.value;
  }
  const auto count = static_cast<double>(pairs.size());
  at /= count;
  value /= count;
  double spread = 0;
  double both = 0;
  for (const Pair& pair : pairs) {
    spread += (pair.at - at) * (pair.at - at);
    both += (pair.at - at) * (pair.value - value);
  }
  if (spread > count) slope = both / spread;
  return {value - slope * at, slope};
}

// What all floors together take up.
class Extent {
 public:
  void add(Point at) {
    box_ = isEmpty_ ? Box{at.x, at.y, at.x, at.y} : box_.with({at.x, at.y, at.x, at.y});
    isEmpty_ = false;
  }
  void add(const Line& line) {
    for (const Point at : line) add(at);
  }
  void add(const std::vector<Polygon>& shapes) {
    for (const Polygon& shape : shapes) {
      for (const Line& ring : shape.rings) add(ring);
    }
  }
  Box box() const { return box_; }

 private:
  Box box_;
  bool isEmpty_ = true;
};

Box extentOf(const Draft& draft) {
  Extent extent;
  for (const DraftNode& node : draft.nodes) extent.add(node.at);
  for (const DraftLink& link : draft.links) extent.add(link.bends);
  for (const DraftFloor& floor : draft.floors) extent.add(floor.shapes);
  for (const DraftArea& area : draft.areas) extent.add(area.shapes);
  for (const DraftLine& wall : draft.walls) extent.add(wall.line);
  for (const DraftLine& mark : draft.marks) extent.add(mark.line);
  for (const DraftLine& door : draft.doors) extent.add(door.line);
  return extent.box();
}

// More than fits an image of the programs that draw SVG, 32767 pixels, shows nothing.
constexpr double mostPx = 32'000;

int mmPerPixelOf(const Box& box) {
  int mmPerPixel = 50;
  while (std::max(box.width(), box.height()) * 1000 / mmPerPixel > mostPx) mmPerPixel *= 2;
  return mmPerPixel;
}

struct Placed {
  Point at;
  // Web Mercator.
  Point globe;
};

// Metres on the plane between where a node is drawn and where it says that it lies.
double apart(const LocalPlane& plane, const DraftNode& node) {
  const Point said = plane.at(*node.globe);
  return std::hypot(said.x - node.at.x, said.y - node.at.y);
}

std::vector<Placed> placedNodes(const Draft& draft, Oddities& told) {
  std::vector<Placed> placed;
  for (const DraftNode& node : draft.nodes) {
    if (!node.globe) continue;
    if (apart(draft.plane, node) < mostOffMetres) {
      placed.push_back({node.at, mercatorOf(*node.globe)});
    } else {
      told.remark(node.id, "misplaced",
                  "Its longitude and latitude are those of another place than where it is drawn.");
    }
  }
  return placed;
}

LonLat onGlobe(Point mercator) {
  return {TernUtils::convertLongitudeEPSG3857ToEPSG4326(mercator.x),
          TernUtils::convertLatitudeEPSG3857ToEPSG4326(mercator.y)};
}

}  // namespace

Placement placementOf(const Draft& draft, Oddities& told) {
  const Box box = extentOf(draft).grownBy(marginMetres);
  Placement placement;
  placement.corner = {box.left, box.top};
  placement.mmPerPixel = mmPerPixelOf(box);
  placement.widthPx = static_cast<int>(std::ceil(box.width() * placement.pxPerMetre()));
  placement.heightPx = static_cast<int>(std::ceil(box.height() * placement.pxPerMetre()));
  std::vector<Placed> placed = placedNodes(draft, told);
  if (placed.empty()) placed.push_back({box.centre(), draft.plane.mercatorAt(box.centre())});
  std::vector<Pair> east;
  std::vector<Pair> south;
  for (const Placed& node : placed) {
    east.push_back({node.at.x, node.globe.x});
    south.push_back({node.at.y, node.globe.y});
  }
  const Point origin = draft.plane.mercatorAt({0, 0});
  const Point metre = draft.plane.mercatorAt({1, 1});
  const Fit x = fitOf(east, metre.x - origin.x);
  const Fit y = fitOf(south, metre.y - origin.y);
  placement.topLeft = onGlobe({x.of(box.left), y.of(box.top)});
  placement.bottomRight = onGlobe({x.of(box.left + placement.widthPx / placement.pxPerMetre()),
                                   y.of(box.top + placement.heightPx / placement.pxPerMetre())});
  for (const Placed& node : placed) {
    const double off = std::hypot((x.of(node.at.x) - node.globe.x) / x.slope,
                                  (y.of(node.at.y) - node.globe.y) / y.slope);
    placement.residual = std::max(placement.residual, off);
  }
  return placement;
}

}  // namespace tern::imports
