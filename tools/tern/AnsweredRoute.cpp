#include "tools/tern/AnsweredRoute.hpp"

#include <limits>

#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"

namespace tern::command {

namespace {

// Null stands for what is not finite.
float floatOf(const Value& number) {
  return number.isNull() ? std::numeric_limits<float>::quiet_NaN()
                         : static_cast<float>(number.number());
}

TernPathPerFloor segmentOf(const TernVenueData& venue, const Value& segment) {
  TernPathPerFloor part;
  part.mapId = segment["mapId"].integer();
  part.cost = floatOf(segment["cost"]);
  part.pixelDistance = floatOf(segment["pixelDistance"]);
  part.mmDistance = floatOf(segment["mmDistance"]);
  const Value& pathType = segment["mover"];
  if (venue.pathTypes && !pathType.isNull()) {
    part.mover = venue.pathTypes->getById(pathType.integer());
  }
  for (const Value& point : segment["mapPoints"].items()) {
    const auto at = point.items();
    part.mapPoints.push_back(
        TernPoint::initWithX(floatOf(at[0]), floatOf(at[1]), static_cast<float>(part.mapId)));
  }
  return part;
}

}  // namespace

TernRoute routeOf(const TernVenueData& venue, const Value& segments) {
  TernRoute route;
  for (const Value& segment : segments.items()) route.push_back(segmentOf(venue, segment));
  return route;
}

std::int64_t startOf(const Value& segments) {
  return segments.items().front()["points"].items().front().integer();
}

std::int64_t endOf(const Value& segments) {
  return segments.items().back()["points"].items().back().integer();
}

}  // namespace tern::command
