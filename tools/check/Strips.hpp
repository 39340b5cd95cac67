// Lines by the upright strips of a drawing that they lie in, so that those near another line are
// found without looking at all.
//
// Ownership: borrows the lines, which must outlive it. Threads: any number of readers.
// Fails: never.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "tools/check/WallLines.hpp"

namespace tern::check {

class Strips {
 public:
  // `reach`: how far beside a line others still count as near it.
  Strips(std::span<const Segment> lines, double width, double reach);

  // Whether the predicate holds for a line whose strips the given one meets.
  template <class Predicate>
  bool any(const Segment& line, Predicate holds) const {
    const auto [first, last] = stripsOf(line);
    for (std::size_t strip = first; strip <= last; ++strip) {
      for (const std::uint32_t index : strips_[strip]) {
        if (holds(lines_[index])) return true;
      }
    }
    return false;
  }

 private:
  struct Range {
    std::size_t first;
    std::size_t last;
  };
  Range stripsOf(const Segment& line) const;

  std::span<const Segment> lines_;
  double stripWidth_;
  double reach_;
  std::vector<std::vector<std::uint32_t>> strips_;
};

}  // namespace tern::check
