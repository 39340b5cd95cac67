// Which maps of a venue anything leads to or from.
//
// Threads: a plain value. Fails: never.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/check/Subject.hpp"

namespace tern::check {

class MapLinks {
 public:
  explicit MapLinks(const Subject& subject);

  // Whether the map has any link to another map, or the venue has no other.
  bool leadOn(std::int64_t map) const;

 private:
  bool isAlone_ = false;
  // Ascending.
  std::vector<std::int64_t> joined_;
};

}  // namespace tern::check
