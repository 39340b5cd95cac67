#include "TernCoreKit/service/coordinates/TernUtils.hpp"

#include <cmath>
#include <optional>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/platform/detail/common/PortableMath.hpp"

namespace tern::inline v5 {

namespace {

constexpr double earthRadius = 6378137.0;  // metres
constexpr double pi = 3.141592653589793;
constexpr double quarterPi = 0.7853981633974483;

constexpr std::string_view degreesName = "EPSG:4326";
constexpr std::string_view metresName = "EPSG:3857";
constexpr std::string_view localName = "tern:local";

// Gives what every conversion gives that cannot be made.
TernCoordinate refuse(std::string_view reason) {
  logLine(reason);
  return {};
}

TernCoordinate metresOfDegrees(TernCoordinate degrees) {
  return {TernUtils::convertLongitudeEPSG4326ToEPSG3857(degrees.x),
          TernUtils::convertLatitudeEPSG4326ToEPSG3857(degrees.y)};
}

TernCoordinate degreesOfMetres(TernCoordinate metres) {
  return {TernUtils::convertLongitudeEPSG3857ToEPSG4326(metres.x),
          TernUtils::convertLatitudeEPSG3857ToEPSG4326(metres.y)};
}

// Where the first map lies: its top left corner and its pixels a metre. The bottom lies south of
// the top, so that `pixelsPerMetre.y` is negative and local y grows downward.
struct Frame {
  TernCoordinate topLeftMetres;
  TernCoordinate pixelsPerMetre;

  TernCoordinate localOf(TernCoordinate metres) const {
    return {(metres.x - topLeftMetres.x) * pixelsPerMetre.x,
            (metres.y - topLeftMetres.y) * pixelsPerMetre.y};
  }
  TernCoordinate metresOf(TernCoordinate local) const {
    return {topLeftMetres.x + local.x / pixelsPerMetre.x,
            topLeftMetres.y + local.y / pixelsPerMetre.y};
  }
};

// A corner of the venue, which its document gives as [latitude, longitude].
std::optional<TernCoordinate> cornerMetres(const TernVenueData* venue, Value TernPosition::*corner,
                                           std::string_view reason) {
  const TernPosition* position = venue != nullptr ? venue->coordinates.get() : nullptr;
  if (position == nullptr || (position->*corner).items().size() != 2) {
    logLine(reason);
    return std::nullopt;
  }
  const auto numbers = (position->*corner).items();
  return metresOfDegrees({numbers[1].number(), numbers[0].number()});
}

std::optional<Frame> frameOf(const TernVenueData* venue) {
  const auto topLeft = cornerMetres(venue, &TernPosition::topLeft,  //
                                    "Invalid top left reference coordinate.");
  if (!topLeft) return std::nullopt;
  const auto bottomRight =
      cornerMetres(venue, &TernPosition::bottomRight, "Invalid bottom right reference coordinate.");
  if (!bottomRight) return std::nullopt;
  const auto map = venue->maps != nullptr ? venue->maps->getFirst() : nullptr;
  if (map == nullptr) {
    logLine("Invalid venue map.");
    return std::nullopt;
  }
  return Frame{*topLeft,
               {map->width.number() / (bottomRight->x - topLeft->x),
                map->height.number() / (bottomRight->y - topLeft->y)}};
}

bool isProjection(std::string_view name) {
  return name == degreesName || name == metresName || name == localName;
}

TernCoordinate convertLocalPoint(TernCoordinate point, std::string_view from, std::string_view to,
                                 const TernVenueData* venue) {
  if (venue == nullptr) {
    return refuse("Valid venue must be passed in for tern:local conversion.");
  }
  if (from == degreesName) return TernUtils::convertPointToLocalCoordinates(point, venue);
  if (from == metresName) return TernUtils::convertPointFromEPSG3857ToLocal(point, venue);
  if (to == degreesName) return TernUtils::convertToLatLongWithLocalCoordinates(point, venue);
  if (to == metresName) return TernUtils::convertPointFromLocalToEPSG3857(point, venue);
  return refuse("Invalid input projections.");
}

}  // namespace

TernCoordinate TernUtils::convertPoint(TernCoordinate point, std::string_view fromProjection,
                                       std::string_view toProjection,
                                       const TernVenueData* inVenue) {
  if (!isProjection(fromProjection)) return refuse("Invalid fromProjection entered.");
  if (!isProjection(toProjection)) return refuse("Invalid toProjection entered.");
  if (fromProjection == localName || toProjection == localName) {
    return convertLocalPoint(point, fromProjection, toProjection, inVenue);
  }
  // A conversion that changes nothing counts as a mistake of the caller.
  if (fromProjection == toProjection) return refuse("Invalid input projections.");
  return fromProjection == degreesName ? metresOfDegrees(point) : degreesOfMetres(point);
}

double TernUtils::convertLatitudeEPSG4326ToEPSG3857(double latitude) {
  return detail::portableLog(detail::portableTan(latitude * pi / 180 * 0.5 + quarterPi)) *
         earthRadius;
}

double TernUtils::convertLongitudeEPSG4326ToEPSG3857(double longitude) {
  return longitude * pi / 180 * earthRadius;
}

double TernUtils::convertLatitudeEPSG3857ToEPSG4326(double northing) {
  const double power = detail::portablePowerOfE(northing / earthRadius);
  const double half = (detail::portableAtan(power) - quarterPi) / pi * 180;
  return half + half;
}

double TernUtils::convertLongitudeEPSG3857ToEPSG4326(double easting) {
  return easting / pi * 180 / earthRadius;
}

TernCoordinate TernUtils::convertPointToLocalCoordinates(TernCoordinate degrees,
                                                         const TernVenueData* inVenue) {
  return convertPointFromEPSG3857ToLocal(metresOfDegrees(degrees), inVenue);
}

TernCoordinate TernUtils::convertPointFromEPSG3857ToLocal(TernCoordinate metres,
                                                          const TernVenueData* inVenue) {
  const auto frame = frameOf(inVenue);
  return frame ? frame->localOf(metres) : TernCoordinate{};
}

TernCoordinate TernUtils::convertToLatLongWithLocalCoordinates(TernCoordinate local,
                                                               const TernVenueData* inVenue) {
  const auto frame = frameOf(inVenue);
  return frame ? degreesOfMetres(frame->metresOf(local)) : TernCoordinate{};
}

TernCoordinate TernUtils::convertPointFromLocalToEPSG3857(TernCoordinate local,
                                                          const TernVenueData* inVenue) {
  const auto frame = frameOf(inVenue);
  return frame ? frame->metresOf(local) : TernCoordinate{};
}

float TernUtils::distanceToLine(TernCoordinate point, TernCoordinate lineP1, TernCoordinate lineP2,
                                TernCoordinate* intersectPoint) {
  return std::sqrt(distToSegmentSquared(point, lineP1, lineP2, intersectPoint));
}

float TernUtils::distToSegmentSquared(TernCoordinate point, TernCoordinate lineP1,
                                      TernCoordinate lineP2, TernCoordinate* intersectPoint) {
  const auto answer = [&](TernCoordinate nearest) {
    if (intersectPoint != nullptr) *intersectPoint = nearest;
    return dist2(point, nearest);
  };
  const double alongX = lineP2.x - lineP1.x;
  const double alongY = lineP2.y - lineP1.y;
  const float squaredLength = dist2(lineP1, lineP2);
  if (squaredLength == 0) return answer(lineP2);
  // Rounded to single precision: what lies past an end by less than that counts as on the segment.
  const auto share =
      static_cast<float>(((point.x - lineP1.x) * alongX + (point.y - lineP1.y) * alongY) /
                         static_cast<double>(squaredLength));
  if (share < 0) return answer(lineP1);
  if (share > 1) return answer(lineP2);
  return answer({lineP1.x + alongX * static_cast<double>(share),
                 lineP1.y + alongY * static_cast<double>(share)});
}

float TernUtils::dist2(TernCoordinate first, TernCoordinate second) {
  return sqr(static_cast<float>(first.x - second.x)) + sqr(static_cast<float>(first.y - second.y));
}

float TernUtils::sqr(float a) { return a * a; }

float TernUtils::distanceBetweenPoint1(TernCoordinate point1, TernCoordinate point2) {
  return std::sqrt(dist2(point2, point1));
}

}  // namespace tern
