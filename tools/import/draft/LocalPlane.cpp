#include "tools/import/draft/LocalPlane.hpp"

#include <cmath>
#include <numbers>

#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::imports {

namespace {

constexpr double squaredEccentricity = 6.69437999014e-3;

}  // namespace

Point mercatorOf(LonLat place) {
  return {TernUtils::convertLongitudeEPSG4326ToEPSG3857(place.longitude),
          TernUtils::convertLatitudeEPSG4326ToEPSG3857(place.latitude)};
}

LocalPlane::LocalPlane(LonLat origin) : origin_(mercatorOf(origin)) {
  const double latitude = origin.latitude * std::numbers::pi / 180;
  const double sine = std::sin(latitude);
  const double bulge = 1 - squaredEccentricity * sine * sine;
  // The radii of curvature along the parallel and along the meridian.
  const double across = semiMajorAxis / std::sqrt(bulge);
  const double along = across * (1 - squaredEccentricity) / bulge;
  east_ = across * std::cos(latitude) / semiMajorAxis;
  south_ = along * std::cos(latitude) / semiMajorAxis;
}

Point LocalPlane::at(LonLat place) const {
  const Point mercator = mercatorOf(place);
  return {(mercator.x - origin_.x) * east_, (origin_.y - mercator.y) * south_};
}

}  // namespace tern::imports
