// Routes that the ordering of destinations has found, by the waypoints where they begin and end.
//
// The key is the two ids in decimal, one after the other: 1 and 23 share theirs with 12 and 3.
//
// Ownership: the routes are copies that no search changes. Threads: one. Fails: never.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::inline v5::detail {

class LegCache {
 public:
  // Null when that leg has not been stored.
  const TernRoute* find(std::int64_t from, std::int64_t to) const {
    const auto found = dictOfTernPathPerFloor_.find(keyOf(from, to));
    return found != dictOfTernPathPerFloor_.end() ? &found->second : nullptr;
  }
  const std::map<std::string, TernRoute>& routes() const { return dictOfTernPathPerFloor_; }
  // The first segment of a stored route; null without one.
  const TernPathPerFloor* firstSegment(std::int64_t from, std::int64_t to) const {
    const TernRoute* route = find(from, to);
    return route != nullptr && !route->empty() ? &route->front() : nullptr;
  }
  const TernRoute& store(std::int64_t from, std::int64_t to, const TernRoute& route) {
    TernRoute copy;
    copy.reserve(route.size());
    for (const TernPathPerFloor& segment : route) copy.push_back(segment.copyWithZone());
    return dictOfTernPathPerFloor_[keyOf(from, to)] = std::move(copy);
  }

 private:
  static std::string keyOf(std::int64_t from, std::int64_t to) {
    return std::to_string(from) + std::to_string(to);
  }

  std::map<std::string, TernRoute> dictOfTernPathPerFloor_;
};

}  // namespace tern::detail
