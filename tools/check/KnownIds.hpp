// The ids of all records that a venue's documents have.
//
// Ownership: a plain value. Threads: any number of readers. Fails: never.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/check/Subject.hpp"

namespace tern::check {

using Ids = std::unordered_set<std::int64_t>;

struct KnownIds {
  explicit KnownIds(const Subject& subject);

  Ids buildings;
  Ids floors;
  Ids destinations;
  Ids amenities;
  Ids pathTypes;
  // For each map its waypoints.
  std::unordered_map<std::int64_t, Ids> maps;
  // For each waypoint the first map that has it.
  std::unordered_map<std::int64_t, std::int64_t> mapOfWaypoint;

 private:
  void addMap(const Value& map);
};

}  // namespace tern::check
