#include "tools/import/imdf/OpenEdges.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "tools/import/ways/BoxGrid.hpp"
#include "tools/import/ways/Crossings.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

// What is nearer than this touches.
constexpr double touchingMetres = 0.05;
// An opening so near to the edge is one in it, whose rest is a wall.
constexpr double inEdgeMetres = 0.3;
constexpr double leastEdgeMetres = 0.5;
constexpr double edgeSampleMetres = 0.25;
constexpr double mostEdgeSamples = 200;

class EdgeOpener {
 public:
  EdgeOpener(Site& site, std::span<const AreaUse> uses) : site_(site), uses_(uses) {
    for (const SiteArea& area : site.areas) boxes_.push_back(boxOfAll(area.shapes));
    std::vector<Box> boxes;
    for (const SiteDoor& door : site.doors) {
      for (const Crossing& crossing : crossingsOf(door.line)) {
        openings_.push_back({door.floor, crossing.at});
        boxes.push_back({crossing.at.x, crossing.at.y, crossing.at.x, crossing.at.y});
      }
    }
    openingsByPlace_ = BoxGrid(std::move(boxes));
  }

  void open() {
    const BoxGrid grid(boxes_);
    for (std::size_t i = 0; i < uses_.size(); ++i) {
      for (const std::uint32_t other : grid.about(boxes_[i].grownBy(touchingMetres))) {
        if (other > i && areAlike(i, other)) openBetween(i, other);
      }
    }
  }

 private:
  bool areAlike(std::size_t a, std::size_t b) const {
    return uses_[a] == uses_[b] && uses_[a] <= AreaUse::ground &&
           site_.areas[a].floor == site_.areas[b].floor;
  }

  void openBetween(std::size_t area, std::size_t other) {
    const std::vector<Line> edges = edgesAlong(area, other);
    const std::size_t floor = site_.areas[area].floor;
    if (std::ranges::any_of(edges, [&](const Line& edge) { return hasOpening(edge, floor); })) {
      return;
    }
    for (const Line& edge : edges) {
      site_.doors.push_back({site_.areas[area].id + "|" + site_.areas[other].id, floor, edge});
    }
  }

  bool hasOpening(const Line& edge, std::size_t floor) const {
    const Point a = edge.front();
    const Point b = edge.back();
    const auto isIn = [&](std::uint32_t index) {
      const Opening& opening = openings_[index];
      return opening.floor == floor &&
             apart(nearestOn(a, b, opening.at), opening.at) < inEdgeMetres;
    };
    return std::ranges::any_of(openingsByPlace_.about(boxAbout(a, b).grownBy(inEdgeMetres)), isIn);
  }

  static Box boxAbout(Point a, Point b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
  }

  // The stretches of the area's sides that the other one lies along.
  std::vector<Line> edgesAlong(std::size_t area, std::size_t other) const {
    std::vector<Line> edges;
    const Box box = boxes_[other].grownBy(touchingMetres);
    for (const Polygon& shape : site_.areas[area].shapes) {
      forEachSide(shape, [&](Point a, Point b) {
        if (box.meets(boxAbout(a, b))) addEdges(a, b, site_.areas[other].shapes, edges);
      });
    }
    return edges;
  }

  static void addEdges(Point a, Point b, const std::vector<Polygon>& others,
                       std::vector<Line>& edges) {
    const double length = apart(a, b);
    if (length < leastEdgeMetres) return;
    const Point out = Point{b.y - a.y, a.x - b.x} * (touchingMetres / length);
    const auto isBeside = [&](Point at) {
      return std::ranges::any_of(others, [&](const Polygon& shape) {
        return holds(shape, at + out) || holds(shape, at - out);
      });
    };
    const double count = std::clamp(std::ceil(length / edgeSampleMetres), 2.0, mostEdgeSamples);
    double from = 0;
    const auto end = [&](double to) {
      if ((to - from) / count * length < leastEdgeMetres) return;
      edges.push_back({between(a, b, from / count), between(a, b, to / count)});
    };
    for (double sample = 0; sample < count; ++sample) {
      if (isBeside(between(a, b, (sample + 0.5) / count))) continue;
      end(sample);
      from = sample + 1;
    }
    end(count);
  }

  Site& site_;
  std::span<const AreaUse> uses_;
  std::vector<Box> boxes_;
  struct Opening {
    std::size_t floor;
    Point at;
  };
  // Those that are drawn.
  std::vector<Opening> openings_;
  BoxGrid openingsByPlace_{{}};
};

}  // namespace

void addOpenEdges(Site& site, std::span<const AreaUse> uses) { EdgeOpener(site, uses).open(); }

}  // namespace tern::imports
