// Points of maps and of the globe.
#include <string_view>

#include "TernCoreKit/answers/detail/AnswerParts.hpp"
#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

namespace tern::inline v5::detail {

Value answerClosest(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t map = fields.integer("map");
  const TernCoordinate at = fields.point("at");
  if (fields.error()) return {};
  const auto closest = venue.getClosestWaypointToCoordinateOnMap(venue.maps->getById(map), at);
  return answerOf("waypoint", waypointPart(closest));
}

Value answerConvert(TernActiveVenue& venue, RequestFields& fields) {
  const TernCoordinate point = fields.point("point");
  const std::string_view from = fields.text("from");
  const std::string_view to = fields.text("to");
  if (fields.error()) return {};
  return answerOf("point", pointPart(TernUtils::convertPoint(point, from, to, &venue)));
}

Value answerCenter(TernActiveVenue& venue, RequestFields&) {
  return answerOf("point", pointPart(venue.getCenterCoordinates()));
}

}  // namespace tern::detail
