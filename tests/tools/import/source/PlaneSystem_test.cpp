#include "tools/import/source/PlaneSystem.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tern::imports {
namespace {

constexpr double degree = std::numbers::pi / 180;
constexpr double semiMajorAxis = 6378137.0;
constexpr double squaredEccentricity = 6.69438002290e-3;

double acrossRadius(double latitude) {
  const double sine = std::sin(latitude * degree);
  return semiMajorAxis / std::sqrt(1 - squaredEccentricity * sine * sine);
}

double alongRadius(double latitude) {
  const double sine = std::sin(latitude * degree);
  return acrossRadius(latitude) * (1 - squaredEccentricity) /
         (1 - squaredEccentricity * sine * sine);
}

// The length of a meridian, by Simpson's rule.
double meridian(double from, double to) {
  constexpr int steps = 200;
  const double step = (to - from) / steps;
  double sum = alongRadius(from) + alongRadius(to);
  for (int i = 1; i < steps; ++i) sum += (i % 2 == 1 ? 4 : 2) * alongRadius(from + i * step);
  return sum * step * degree / 3;
}

// East and north, in metres on the ellipsoid, from one place to one close to it.
Point offset(LonLat from, LonLat to) {
  return {(to.longitude - from.longitude) * degree * acrossRadius(from.latitude) *
              std::cos(from.latitude * degree),
          (to.latitude - from.latitude) * degree * alongRadius(from.latitude)};
}

LonLat place(std::string_view system, Point point) {
  return planeSystemOf(system)->onGlobe(point).value();
}

TEST(PlaneSystem, degreesStayWhatTheyAre) {
  for (const char* name :
       {"EPSG:4326", "urn:ogc:def:crs:OGC:1.3:CRS84", "urn:ogc:def:crs:EPSG::6668"}) {
    EXPECT_DOUBLE_EQ(place(name, {139.5, 35.5}).longitude, 139.5);
    EXPECT_DOUBLE_EQ(place(name, {139.5, 35.5}).latitude, 35.5);
  }
}

TEST(PlaneSystem, webMercatorIsUndone) {
  const LonLat found = place("EPSG:3857", mercatorOf({-71.06, 42.36}));
  EXPECT_NEAR(found.longitude, -71.06, 1e-9);
  EXPECT_NEAR(found.latitude, 42.36, 1e-9);
}

TEST(PlaneSystem, zonesOfJapanBeginWhereTheyAreSaidTo) {
  EXPECT_NEAR(place("EPSG:6677", {0, 0}).longitude, 139 + 50 / 60.0, 1e-10);
  EXPECT_NEAR(place("EPSG:6677", {0, 0}).latitude, 36, 1e-10);
  EXPECT_NEAR(place("EPSG:6675", {0, 0}).longitude, 137 + 10 / 60.0, 1e-10);
  EXPECT_NEAR(place("EPSG:2451", {0, 0}).longitude, 139 + 50 / 60.0, 1e-10);
  EXPECT_NEAR(place("EPSG:6687", {0, 0}).latitude, 26, 1e-10);
}

// A transverse Mercator is the conformal map that is true, but for its scale, along its meridian;
// no other map has both properties.
TEST(PlaneSystem, meridianIsAsLongAsOnTheEllipsoid) {
  for (const double north : {-150'000.0, -25'000.0, 40'000.0, 200'000.0}) {
    const LonLat found = place("EPSG:6677", {0, north});
    EXPECT_NEAR(meridian(36, found.latitude) * 0.9999, north, 1e-3);
    EXPECT_NEAR(found.longitude, 139 + 50 / 60.0, 1e-12);
  }
}

TEST(PlaneSystem, smallShapesKeepTheirAngles) {
  for (const Point at : {Point{50'000, -26'000}, {-268'000, -87'000}, {-19'000, -54'000}}) {
    const LonLat middle = place("EPSG:6677", at);
    const Point east = offset(middle, place("EPSG:6677", {at.x + 1, at.y}));
    const Point north = offset(middle, place("EPSG:6677", {at.x, at.y + 1}));
    EXPECT_NEAR(std::hypot(east.x, east.y), std::hypot(north.x, north.y), 2e-7);
    EXPECT_NEAR(east.x * north.x + east.y * north.y, 0, 2e-7);
  }
}

TEST(PlaneSystem, zonesOfUtmAreKnown) {
  EXPECT_NEAR(place("EPSG:32619", {500'000, 4'649'776.2248}).longitude, -69, 1e-9);
  EXPECT_NEAR(place("EPSG:32619", {500'000, 4'649'776.2248}).latitude, 42, 1e-7);
  EXPECT_LT(place("EPSG:32719", {500'000, 9'000'000}).latitude, 0);
}

TEST(PlaneSystem, whatIsNoPlaceIsNone) {
  EXPECT_EQ(PlaneSystem().onGlobe({181, 0}), std::nullopt);
  EXPECT_EQ(PlaneSystem().onGlobe({0, 86}), std::nullopt);
  EXPECT_EQ(PlaneSystem().onGlobe({NAN, 0}), std::nullopt);
  EXPECT_EQ(planeSystemOf("EPSG:6677")->onGlobe({1e300, 0}), std::nullopt);
}

TEST(PlaneSystem, unknownNamesAreNone) {
  for (const char* name : {"", "EPSG:", "EPSG:1", "EPSG:6677x", "6677", "EPSG:99999999999"}) {
    EXPECT_FALSE(planeSystemOf(std::string_view(name)).has_value()) << name;
  }
}

}  // namespace
}  // namespace tern::imports
