// Says fast whether a straight way crosses a wall: the sides of an area, sorted into the cells of a
// grid, of which only those are looked at that the way leads through.
//
//   const WallGrid walls(area);
//   if (!walls.areCrossed(door, corner)) ...
//
// What only touches a wall crosses none, nor what begins or ends at one. A way that leads exactly
// through a corner may count as crossing; then there are two ways that meet at the corner.
//
// Ownership: owns what it needs of the area. Threads: one caller at a time. Fails: never.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

class WallGrid {
 public:
  explicit WallGrid(const Polygon& area);

  bool areCrossed(Point from, Point to) const;
  // Whether one is nearer than so many metres.
  bool areNear(Point at, double metres) const;

 private:
  struct Wall {
    Point a;
    Point b;
  };

  struct Way {
    Point from;
    Point unit;
    double metres;
  };

  struct Cell {
    std::int64_t column;
    std::int64_t row;
  };

  Cell cellAt(Point at) const;
  bool isCrossedIn(Cell cell, const Way& way) const;
  static bool isCrossed(const Wall& wall, const Way& way);
  template <class Use>
  void forCellsOf(const Wall& wall, Use use) const;

  std::vector<Wall> walls_;
  Box box_;
  double cellMetres_ = 1;
  std::int64_t columns_ = 1;
  std::int64_t rows_ = 1;
  // The walls of cell i are those between starts_[i] and starts_[i + 1].
  std::vector<std::uint32_t> starts_;
  std::vector<std::uint32_t> inCell_;
};

}  // namespace tern::imports
