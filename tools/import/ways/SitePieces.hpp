// The connected pieces of the areas that one may walk in, and which of them lie at a place.
//
// Where pieces lie over each other the smallest one counts: a room in a hall is a room.
//
// Ownership: owns the pieces; borrows the areas while it is made. Threads: one caller at a time.
// Fails: never.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "tools/import/ways/BoxGrid.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

struct SitePiece {
  std::size_t area = 0;
  std::size_t floor = 0;
  Polygon shape;
  double squareMetres = 0;
  std::vector<Point> doors;
  // Of each door the node in its middle.
  std::vector<std::size_t> doorNodes;
  std::vector<Point> places;
  // Of each place the stand, or none for where a mover is entered.
  std::vector<std::optional<std::size_t>> stands;
};

class SitePieces {
 public:
  explicit SitePieces(std::span<const SiteArea> areas);

  std::vector<SitePiece>& all() { return pieces_; }

  // Null for none.
  SitePiece* at(std::size_t floor, Point at, const SitePiece* but = nullptr);
  // That which is nearest to the point when one steps aside from it along the normal.
  SitePiece* beside(std::size_t floor, Point at, Point normal, const SitePiece* but);
  // The one that holds the point, else that with the nearest edge, not far away.
  SitePiece* nearest(std::size_t floor, Point at);
  // Whether one piece lies on both sides: then the line is one on its ground, no door.
  bool areOneAcross(std::size_t floor, Point at, Point normal);

  struct Wall {
    Point at;
    SitePiece* within = nullptr;
    // Null where the wall is one to nowhere.
    SitePiece* beyond = nullptr;
  };
  // Of the piece that lies on both sides of the point the wall that one comes to first along the
  // normal or against it, a person's width away at most.
  std::optional<Wall> wallAcross(std::size_t floor, Point at, Point normal);

 private:
  std::vector<SitePiece> pieces_;
  struct OnFloor {
    std::vector<std::size_t> pieces;
    BoxGrid boxes{{}};
  };
  std::vector<OnFloor> floors_;
};

}  // namespace tern::imports
