// Coordinate systems by which a GeoJSON file may give its places, and how they lie on the globe:
// longitude and latitude, Web Mercator, the zones of UTM, and the nineteen zones of the plane in
// which Japan is surveyed.
//
//   const auto system = planeSystemOf("urn:ogc:def:crs:EPSG::6677");
//   system->onGlobe({-19491.2, -54568.5});  // {139.618..., 35.508...}
//
// JGD2011, JGD2000 and WGS 84 are taken for one; they differ by less than a metre. A transverse
// Mercator is inverted by Krueger's series to the fourth order, good to a micrometre within a
// thousand kilometres.
//
// Ownership: plain values. Threads: free functions. Fails: by value.
#pragma once

#include <optional>
#include <string_view>

#include "tools/import/draft/LocalPlane.hpp"

namespace tern::imports {

class PlaneSystem {
 public:
  enum class Form { degrees, webMercator, transverseMercator };

  // A meridian strip; degrees and metres.
  struct Strip {
    LonLat origin;
    double scale = 1;
    double falseEast = 0;
    double falseNorth = 0;
  };

  PlaneSystem() = default;
  static PlaneSystem webMercator() { return PlaneSystem(Form::webMercator, {}); }
  static PlaneSystem strip(const Strip& strip) {
    return PlaneSystem(Form::transverseMercator, strip);
  }

  // None for what is no place on the globe. The point is in the system's own unit, x to the east
  // and y to the north.
  std::optional<LonLat> onGlobe(Point point) const;

 private:
  PlaneSystem(Form form, const Strip& strip) : form_(form), strip_(strip) {}

  Form form_ = Form::degrees;
  Strip strip_;
};

// By the name that GeoJSON has for it, as "EPSG:6677" or "urn:ogc:def:crs:OGC:1.3:CRS84"; none for
// one that is not known.
std::optional<PlaneSystem> planeSystemOf(std::string_view name);

}  // namespace tern::imports
