#include "tools/import/source/PlaneSystem.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::imports {

namespace {

constexpr double degree = std::numbers::pi / 180;
constexpr double flattening = 1 / 298.257222101;
constexpr double n = flattening / (2 - flattening);
constexpr double n2 = n * n;
constexpr double n3 = n2 * n;
constexpr double n4 = n3 * n;
// Of a meridian, divided by twice pi.
constexpr double meridianRadius = semiMajorAxis / (1 + n) * (1 + n2 / 4 + n4 / 64);
// L. Krueger 1912, in the form of C. F. F. Karney, Transverse Mercator with an accuracy of a few
// nanometers, 2011.
using Series = std::array<double, 4>;
constexpr Series toStrip{n / 2 - 2 * n2 / 3 + 5 * n3 / 16 + 41 * n4 / 180,
                         13 * n2 / 48 - 3 * n3 / 5 + 557 * n4 / 1440,
                         61 * n3 / 240 - 103 * n4 / 140, 49561 * n4 / 161280};
constexpr Series fromStrip{n / 2 - 2 * n2 / 3 + 37 * n3 / 96 - n4 / 360,
                           n2 / 48 + n3 / 15 - 437 * n4 / 1440, 17 * n3 / 480 - 37 * n4 / 840,
                           4397 * n4 / 161280};
constexpr Series toLatitude{2 * n - 2 * n2 / 3 - 2 * n3 + 116 * n4 / 45,
                            7 * n2 / 3 - 8 * n3 / 5 - 227 * n4 / 45, 56 * n3 / 15 - 136 * n4 / 35,
                            4279 * n4 / 630};

// How far a latitude is from the equator along the meridian, in meridian radii.
double rectified(double latitude) {
  const double eccentricity = 2 * std::sqrt(n) / (1 + n);
  const double sine = std::sin(latitude);
  const double t = std::sinh(std::atanh(sine) - eccentricity * std::atanh(eccentricity * sine));
  const double conformal = std::atan(t);
  double sum = conformal;
  for (int i = 0; i < 4; ++i)
    sum += toStrip[static_cast<std::size_t>(i)] * std::sin(2 * (i + 1) * conformal);
  return sum;
}

LonLat fromStripOf(const PlaneSystem::Strip& strip, Point point) {
  const double radius = strip.scale * meridianRadius;
  const double north =
      (point.y - strip.falseNorth) / radius + rectified(strip.origin.latitude * degree);
  const double east = (point.x - strip.falseEast) / radius;
  double xi = north;
  double eta = east;
  for (int i = 0; i < 4; ++i) {
    const double k = 2 * (i + 1);
    xi -= fromStrip[static_cast<std::size_t>(i)] * std::sin(k * north) * std::cosh(k * east);
    eta -= fromStrip[static_cast<std::size_t>(i)] * std::cos(k * north) * std::sinh(k * east);
  }
  const double conformal = std::asin(std::sin(xi) / std::cosh(eta));
  double latitude = conformal;
  for (int i = 0; i < 4; ++i)
    latitude += toLatitude[static_cast<std::size_t>(i)] * std::sin(2 * (i + 1) * conformal);
  const double longitude = std::atan2(std::sinh(eta), std::cos(xi));
  return {strip.origin.longitude + longitude / degree, latitude / degree};
}

// Whether the local plane can hold it.
bool isOnGlobe(LonLat place) {
  return std::abs(place.longitude) <= 180 && std::abs(place.latitude) <= 85;
}

// The zones of the plane of Japan, in degrees and sixtieths.
struct Zone {
  int north;
  int east;
  int eastSixtieths;
};
constexpr std::array<Zone, 19> zonesOfJapan{{{33, 129, 30},
                                             {33, 131, 0},
                                             {36, 132, 10},
                                             {33, 133, 30},
                                             {36, 134, 20},
                                             {36, 136, 0},
                                             {36, 137, 10},
                                             {36, 138, 30},
                                             {36, 139, 50},
                                             {40, 140, 50},
                                             {44, 140, 15},
                                             {44, 142, 15},
                                             {44, 144, 15},
                                             {26, 142, 0},
                                             {26, 127, 30},
                                             {26, 124, 0},
                                             {26, 131, 0},
                                             {20, 136, 0},
                                             {26, 154, 0}}};

PlaneSystem zoneOfJapan(int number) {
  const Zone& zone = zonesOfJapan[static_cast<std::size_t>(number) - 1];
  return PlaneSystem::strip(
      {{zone.east + zone.eastSixtieths / 60.0, static_cast<double>(zone.north)}, 0.9999, 0, 0});
}

PlaneSystem utm(int zone, bool isSouth) {
  return PlaneSystem::strip({{zone * 6 - 183.0, 0}, 0.9996, 500'000, isSouth ? 10'000'000.0 : 0.0});
}

std::optional<PlaneSystem> systemOfCode(int code) {
  if (code == 4326 || code == 6668 || code == 4612) return PlaneSystem();
  if (code == 3857) return PlaneSystem::webMercator();
  if (code >= 6669 && code <= 6687) return zoneOfJapan(code - 6668);
  if (code >= 2443 && code <= 2461) return zoneOfJapan(code - 2442);
  if (code >= 6688 && code <= 6692) return utm(code - 6637, false);
  if (code >= 32601 && code <= 32660) return utm(code - 32600, false);
  if (code >= 32701 && code <= 32760) return utm(code - 32700, true);
  return std::nullopt;
}

}  // namespace

std::optional<LonLat> PlaneSystem::onGlobe(Point point) const {
  // Farther than the globe is round is no place in any of them.
  if (!(std::abs(point.x) < 5e7 && std::abs(point.y) < 5e7)) return std::nullopt;
  LonLat place{point.x, point.y};
  if (form_ == Form::webMercator) {
    place = {TernUtils::convertLongitudeEPSG3857ToEPSG4326(point.x),
             TernUtils::convertLatitudeEPSG3857ToEPSG4326(point.y)};
  } else if (form_ == Form::transverseMercator) {
    place = fromStripOf(strip_, point);
  }
  return isOnGlobe(place) ? std::optional(place) : std::nullopt;
}

std::optional<PlaneSystem> planeSystemOf(std::string_view name) {
  const std::string_view last = name.substr(name.rfind(':') + 1);
  if (last == "CRS84") return PlaneSystem();
  if (name.find("EPSG") == std::string_view::npos) return std::nullopt;
  int code = 0;
  const auto [end, error] = std::from_chars(last.data(), last.data() + last.size(), code);
  if (error != std::errc() || end != last.data() + last.size()) return std::nullopt;
  return systemOfCode(code);
}

}  // namespace tern::imports
