// The outlines of areas by the nodes that they are made of: where a node lies on a wall, and which
// way the wall runs there.
//
// Ownership: borrows the areas and the nodes. Threads: const calls from any.
// Fails: by value.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "tools/import/osm/OsmArea.hpp"

namespace tern::imports {

class OsmOutlines {
 public:
  using PlaceOf = std::function<std::optional<Point>(std::int64_t)>;

  OsmOutlines(std::span<const OsmArea> areas, PlaceOf placeOf);

  // Of areas that the node lies on the outline of, each once.
  std::vector<std::size_t> floorsAt(std::int64_t node) const;
  bool isOnWall(std::int64_t node, std::size_t floor) const;
  // Whether one wall of the floor goes through both.
  bool shareWall(std::int64_t a, std::int64_t b, std::size_t floor) const;
  // So many metres of the outline round the node; of one that is part of none, of the nearest
  // within half a metre.
  std::optional<Line> doorAt(std::int64_t node, std::size_t floor, double metres) const;

 private:
  struct Spot {
    std::size_t area;
    std::size_t ring;
    std::size_t index;
  };

  const std::vector<Spot>& spotsOf(std::int64_t node) const;
  std::optional<Line> doorOn(const Spot& spot, Point at, double metres) const;
  bool isBetweenAreas(const Line& line, std::size_t floor) const;
  bool isInArea(Point at, std::size_t floor) const;
  std::optional<Line> doorNear(Point at, std::size_t floor, double metres) const;

  std::span<const OsmArea> areas_;
  PlaceOf placeOf_;
  std::unordered_map<std::int64_t, std::vector<Spot>> spots_;
};

}  // namespace tern::imports
