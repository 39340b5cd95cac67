// The ways of a venue as a route takes them: the links of its graph, with waypoints by their number
// in a list. Waypoints that repeat an id are one, the first.
//
// Ownership: a plain value. Threads: any number of readers. Fails: never; links to waypoints that
// are not there are left out.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/drawing/Geometry.hpp"
#include "tools/graph/Components.hpp"

namespace tern::check {

using Point = drawing::PointOf<double>;

struct Node {
  std::int64_t id = 0;
  std::int64_t map = 0;
  // In map units.
  Point at;
};

struct Link {
  std::uint32_t to = 0;
  std::int64_t path = 0;
  std::int64_t pathType = 0;
  std::int64_t accessibility = 0;
};

inline constexpr std::int64_t anyLevel = std::numeric_limits<std::int64_t>::max();
// What people in wheelchairs ask for.
inline constexpr std::int64_t stepFreeLevel = 0;

class Network {
 public:
  explicit Network(const TernASGrid& grid);

  const std::vector<Node>& nodes() const { return nodes_; }
  std::span<const Link> linksOf(std::uint32_t node) const {
    return std::span(links_).subspan(first_[node], first_[node + 1] - first_[node]);
  }
  std::optional<std::uint32_t> find(std::int64_t waypointId) const;
  bool changesMap(std::uint32_t from, const Link& link) const {
    return nodes_[from].map != nodes_[link.to].map;
  }

  // Only with links that the accessibility level admits.
  graph::Digraph upTo(std::int64_t level) const;

 private:
  std::vector<Node> nodes_;
  std::unordered_map<std::int64_t, std::uint32_t> numbers_;
  std::vector<std::size_t> first_;
  std::vector<Link> links_;
};

}  // namespace tern::check
