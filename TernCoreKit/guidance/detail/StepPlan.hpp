// What has to be said on a walked route, and where: turns, rides, and ways into another building.
//
// Threads: as readers of the graph. Fails: never.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "TernCoreKit/guidance/TernStep.hpp"
#include "TernCoreKit/guidance/detail/WalkedRoute.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::inline v5::detail {

struct Decision {
  TernStep::Kind kind = TernStep::Kind::depart;
  // Indices of the route's nodes: where it is to be said, and where walking goes on.
  std::size_t node = 0;
  std::size_t resume = 0;
  // How far it turns there: to the right above 0.
  std::optional<double> degrees;
  const Ride* ride = nullptr;
};

std::optional<TernDirection> directionOf(std::optional<double> degrees);

// The nodes, ascending, where another way goes straighter on than the route does.
std::vector<std::size_t> partings(const WalkedRoute& route, const TernASGrid& grid,
                                  MapPlaces& places);

// REQUIRES: the route has a node.
std::vector<Decision> planOf(const WalkedRoute& route, std::span<const std::size_t> partings);

}  // namespace tern::detail
