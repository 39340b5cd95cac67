// What holds in every venue that a document makes, however wrong the document is.
//
// Threads: one. Fails: by `require`.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::fuzz {

// The venue of {"venue": document, "buildings": {id: document}}, without a graph.
std::shared_ptr<TernActiveVenue> venueOf(const Value& documents);

// Routes over a grid, told again from the links that its nodes show.
class RouteChecks {
 public:
  explicit RouteChecks(const TernASGrid& grid) : grid_(grid) {}

  // A route that a search has found between nodes of these ids, or none.
  void check(const TernRoute& route, std::int64_t from, std::int64_t to, std::int64_t level);
  // A copy: which links lead on, and nothing of what its search knew.
  void checkCopy(const TernRoute& route, std::int64_t from, std::int64_t level);

 private:
  using Links = std::vector<TernNeighbor>;

  const Links& linksOf(std::int64_t id);
  bool leads(std::int64_t from, std::int64_t to, std::int64_t level);
  void checkStep(const TernASNode& a, const TernASNode& b, std::int64_t level);

  const TernASGrid& grid_;
  std::unordered_map<std::int64_t, Links> links_;
};

// Routes, alternatives, tours and what is nearest, over a few waypoints and places of the venue,
// whose graph and trees are built.
void checkVenue(TernActiveVenue& venue);

// As the active venue compares ids.
constexpr std::int64_t narrowed(std::int64_t id) { return static_cast<std::int32_t>(id); }

}  // namespace tern::fuzz
