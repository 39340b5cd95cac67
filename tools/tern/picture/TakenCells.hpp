// Which parts of a small picture are taken: a bit for each square of two pixels. Asking costs a few
// words, however much lies there.
//
// Ownership: a plain value. Threads: as a standard container. Fails: never; what lies outside of
// the picture is neither taken nor counted.
//
//   TakenCells cells({358, 220});
//   cells.take({10, 10, 90, 32});
//   if (cells.areFree(box)) ...
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/tern/picture/Geometry.hpp"

namespace tern::picture {

class TakenCells {
 public:
  explicit TakenCells(Size size);

  // All squares that the box touches.
  void take(const Box& box);
  // All that a line of that half width touches.
  void takeLine(Point from, Point to, double halfWidth);

  // Whether none of the squares that the box touches is taken.
  bool areFree(const Box& box) const { return takenArea(box) == 0; }
  // How much of them is taken, in square pixels.
  double takenArea(const Box& box) const;

 private:
  struct Rows {
    std::size_t top = 0;
    std::size_t bottom = 0;
    std::size_t left = 0;
    std::size_t right = 0;
  };
  Rows rowsOf(const Box& box) const;
  template <class Use>
  void eachWord(const Box& box, Use use) const;

  std::size_t columns_ = 0;
  std::size_t rows_ = 0;
  std::size_t wordsPerRow_ = 0;
  std::vector<std::uint64_t> bits_;
};

}  // namespace tern::picture
