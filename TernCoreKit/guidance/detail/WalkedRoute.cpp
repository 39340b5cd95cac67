#include "TernCoreKit/guidance/detail/WalkedRoute.hpp"

#include <algorithm>

#include "TernCoreKit/guidance/detail/LineTurns.hpp"
#include "TernCoreKit/guidance/detail/Plane.hpp"

namespace tern::inline v5::detail {

namespace {

TernCoordinate scaled(TernCoordinate point, double factor) {
  return {point.x * factor, point.y * factor};
}

double walkedMm(const WalkedNode& node, TernCoordinate before, double units, const MapPlace& place,
                bool isJoined) {
  if (isJoined) return 1000 * apart(before, node.at);
  const double mmPerPixel = place.map != nullptr ? place.map->mmPerPixel.number() : 0;
  return units * mmPerPixel;
}

// A node's own distance runs from the route's start.
std::vector<WalkedNode> walkedNodes(const TernRoute& route, MapPlaces& places) {
  const bool isJoined = places.areOfJoinedVenues();
  std::vector<WalkedNode> nodes;
  double walked = 0;
  for (const TernPathPerFloor& segment : route) {
    const MapPlace& place = places.of(segment.mapId);
    for (const TernASNode& node : segment.points) {
      const double distance = node.distance().value_or(0);
      WalkedNode next{node.nodeId(), segment.mapId, onMap(node, place, isJoined), 0,
                      node.usedEdgeTypeId()};
      const bool isOnTheSameMap = !nodes.empty() && nodes.back().mapId == next.mapId;
      if (!nodes.empty() && (isOnTheSameMap || !isJoined)) {
        next.mm = walkedMm(next, nodes.back().at, distance - walked, place, isJoined);
      }
      walked = distance;
      nodes.push_back(next);
    }
  }
  return nodes;
}

// Whether a ride goes on behind a walk so short that it is a landing.
bool isLanding(std::span<const WalkedNode> nodes, const Ride& ride, std::size_t entry) {
  double mm = 0;
  for (std::size_t i = ride.exit + 1; i <= entry; ++i) {
    if (nodes[i].mapId != nodes[ride.exit].mapId) return false;
    mm += std::max(nodes[i].mm, 1000 * apart(nodes[i - 1].at, nodes[i].at));
  }
  return mm < 1000 * (tellableApart + 1);
}

std::vector<Ride> ridesOf(std::span<const WalkedNode> nodes) {
  std::vector<Ride> rides;
  for (std::size_t i = 1; i < nodes.size(); ++i) {
    const std::int64_t type = nodes[i].pathTypeId;
    if (type == walkingPathType) continue;
    if (!rides.empty() && rides.back().pathTypeId == type &&
        isLanding(nodes, rides.back(), i - 1)) {
      rides.back().exit = i;
    } else {
      rides.push_back({i - 1, i, type});
    }
  }
  return rides;
}

}  // namespace

TernCoordinate onMap(const TernASNode& node, const MapPlace& place, bool isJoined) {
  TernCoordinate at{node.x(), node.y()};
  if (place.map == nullptr) return {};
  if (isJoined) at = TernUtils::convertPoint(at, "EPSG:4326", "tern:local", place.venue.get());
  return scaled(at, metresPerUnit(place.map.get()));
}

WalkedRoute walkedRoute(const TernRoute& route, MapPlaces& places) {
  WalkedRoute walked{walkedNodes(route, places), {}};
  walked.rides = ridesOf(walked.nodes);
  return walked;
}

}  // namespace tern::detail
