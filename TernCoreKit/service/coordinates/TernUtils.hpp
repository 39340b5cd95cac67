#pragma once

#include <string_view>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

struct TernVenueData;

/// A point of two doubles; what they mean is said where it is used.
struct TernCoordinate {
  /// Easting, longitude or pixels from the left.
  double x = 0;
  /// Northing, latitude or pixels from the top.
  double y = 0;
  /// Whether both coordinates are equal.
  friend bool operator==(const TernCoordinate&, const TernCoordinate&) = default;
};

/// Converts points between projections and measures distances to segments.
///
/// "EPSG:4326"   degrees: x longitude, y latitude (WGS 84)
/// "EPSG:3857"   metres of the spherical Mercator projection: x easting, y northing
/// "tern:local"  pixels of the venue's first map: origin top left, y downward
///
/// The local system hangs on the venue's corners, given as [latitude, longitude], and on the size
/// of its first map.
///
/// Ownership: keeps nothing.
/// Threads: any.
/// Fails: never loudly: what cannot be converted is logged and gives (0, 0). The poles give
/// infinities, a venue without extent infinities or not-a-number values.
///
///     TernUtils::convertPoint({13.4, 52.5}, "EPSG:4326", "tern:local", &venue);
class TERN_API TernUtils {
 public:
  /// The point in the other projection. The venue may be null unless one side is local.
  static TernCoordinate convertPoint(TernCoordinate point, std::string_view fromProjection,
                                     std::string_view toProjection, const TernVenueData* inVenue);

  /// Degrees of latitude as metres of northing.
  static double convertLatitudeEPSG4326ToEPSG3857(double latitude);
  /// Degrees of longitude as metres of easting.
  static double convertLongitudeEPSG4326ToEPSG3857(double longitude);
  /// Metres of northing as degrees of latitude.
  static double convertLatitudeEPSG3857ToEPSG4326(double northing);
  /// Metres of easting as degrees of longitude.
  static double convertLongitudeEPSG3857ToEPSG4326(double easting);

  /// From degrees to pixels.
  static TernCoordinate convertPointToLocalCoordinates(TernCoordinate degrees,
                                                       const TernVenueData* inVenue);
  /// From metres to pixels.
  static TernCoordinate convertPointFromEPSG3857ToLocal(TernCoordinate metres,
                                                        const TernVenueData* inVenue);
  /// From pixels to degrees.
  static TernCoordinate convertToLatLongWithLocalCoordinates(TernCoordinate local,
                                                             const TernVenueData* inVenue);
  /// From pixels to metres.
  static TernCoordinate convertPointFromLocalToEPSG3857(TernCoordinate local,
                                                        const TernVenueData* inVenue);

  /// Distance from a point to a segment, in the unit of the points. The nearest point of the
  /// segment goes to `intersectPoint` unless that is null.
  static float distanceToLine(TernCoordinate point, TernCoordinate lineP1, TernCoordinate lineP2,
                              TernCoordinate* intersectPoint);
  /// The square of the same distance, and the same point.
  static float distToSegmentSquared(TernCoordinate point, TernCoordinate lineP1,
                                    TernCoordinate lineP2, TernCoordinate* intersectPoint);
  /// The squared distance of two points, in single precision.
  static float dist2(TernCoordinate first, TernCoordinate second);
  /// The square.
  static float sqr(float a);
  /// The distance of two points, in single precision.
  static float distanceBetweenPoint1(TernCoordinate point1, TernCoordinate point2);
};

}  // namespace tern
