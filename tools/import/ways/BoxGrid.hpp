// Of many boxes those that lie at a place: their indices, sorted into the cells of a grid.
//
//   const BoxGrid grid(boxes);
//   for (const std::uint32_t box : grid.about({x, y, x, y})) ...
//
// Ownership: owns what it needs. Threads: reads from several at once. Fails: never.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "tools/import/draft/LocalPlane.hpp"

namespace tern::imports {

class BoxGrid {
 public:
  explicit BoxGrid(std::vector<Box> boxes);

  // Those that share a point with this one, in their order.
  std::vector<std::uint32_t> about(const Box& box) const;

 private:
  struct Cells {
    std::size_t left;
    std::size_t top;
    std::size_t right;
    std::size_t bottom;
  };

  Cells cellsOf(const Box& box) const;

  std::vector<Box> boxes_;
  Box all_;
  double cellMetres_ = 1;
  std::size_t columns_ = 1;
  std::size_t rows_ = 1;
  std::vector<std::vector<std::uint32_t>> inCell_;
};

}  // namespace tern::imports
