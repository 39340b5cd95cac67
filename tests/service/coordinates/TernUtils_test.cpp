#include "TernCoreKit/service/coordinates/TernUtils.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"
#include "tests/support/CapturedLog.hpp"

namespace tern {
namespace {

using test::CapturedLog;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double infinity = std::numeric_limits<double>::infinity();
const TernCoordinate origin{0, 0};

std::shared_ptr<TernMap> mapOfSize(int id, Value width, Value height) {
  return TernMap::initWithDictionary(
      Value::map({{"id", id}, {"width", std::move(width)}, {"height", std::move(height)}}));
}

// Corners as [latitude, longitude].
struct FramedVenue : TernVenueData {
  FramedVenue(Value topLeft, Value bottomRight, const std::shared_ptr<TernMap>& map = nullptr) {
    coordinates = TernPosition::initWithDictionary(
        Value::map({{"topLeft", std::move(topLeft)}, {"bottomRight", std::move(bottomRight)}}));
    maps = std::make_shared<TernMapCollection>();
    maps->addMapToCollection(map);
  }
};

FramedVenue venueOfTenDegrees() {
  return {Value::list({10, 0}), Value::list({0, 10}), mapOfSize(1, 1000, 1000)};
}

void expectNear(TernCoordinate actual, TernCoordinate expected, double tolerance) {
  EXPECT_NEAR(actual.x, expected.x, tolerance);
  EXPECT_NEAR(actual.y, expected.y, tolerance);
}

TEST(TernUtils, longitude180IsHalfTheEquatorInMetres) {
  EXPECT_EQ(TernUtils::convertLongitudeEPSG4326ToEPSG3857(180), 20037508.342789244);
}

TEST(TernUtils, latitude0IsTheEquator) {
  EXPECT_NEAR(TernUtils::convertLatitudeEPSG4326ToEPSG3857(0), 0, 1e-8);
  EXPECT_EQ(TernUtils::convertLatitudeEPSG3857ToEPSG4326(0), 0);
}

TEST(TernUtils, latitudeOfTheSquareWorldMapIsItsUpperEdge) {
  EXPECT_NEAR(TernUtils::convertLatitudeEPSG4326ToEPSG3857(85.0511287798066), 20037508.342789244,
              1e-6);
}

TEST(TernUtils, latitudesAreNotClampedAtThePoles) {
  EXPECT_EQ(TernUtils::convertLatitudeEPSG4326ToEPSG3857(-90), -infinity);
  EXPECT_GT(TernUtils::convertLatitudeEPSG4326ToEPSG3857(90), 2e8);
  EXPECT_EQ(TernUtils::convertLatitudeEPSG3857ToEPSG4326(infinity), 90);
}

TEST(TernUtils, degreesToMetresAndBackReturnTheInput) {
  const TernCoordinate berlin{13.4, 52.5};
  const auto metres = TernUtils::convertPoint(berlin, "EPSG:4326", "EPSG:3857", nullptr);
  expectNear(metres, {1491681.18, 6891041.72}, 0.01);
  expectNear(TernUtils::convertPoint(metres, "EPSG:3857", "EPSG:4326", nullptr), berlin, 1e-9);
}

TEST(TernUtils, cornersOfTheVenueAreCornersOfItsMap) {
  const FramedVenue venue = venueOfTenDegrees();
  const auto toLocal = [&](TernCoordinate degrees) {
    return TernUtils::convertPoint(degrees, "EPSG:4326", "tern:local", &venue);
  };
  expectNear(toLocal({0, 10}), {0, 0}, 1e-9);
  expectNear(toLocal({10, 0}), {1000, 1000}, 1e-9);
  EXPECT_EQ(toLocal({5, 10}).x, 500);
}

TEST(TernUtils, localScaleIsThatOfTheFirstMap) {
  FramedVenue venue = venueOfTenDegrees();
  venue.maps->addMapToCollection(mapOfSize(2, 5, 5));
  expectNear(TernUtils::convertPoint({10, 0}, "EPSG:4326", "tern:local", &venue), {1000, 1000},
             1e-9);
}

TEST(TernUtils, localYGrowsDownward) {
  const FramedVenue venue = venueOfTenDegrees();
  const auto upper = TernUtils::convertPointFromLocalToEPSG3857({0, 100}, &venue);
  const auto lower = TernUtils::convertPointFromLocalToEPSG3857({0, 200}, &venue);
  EXPECT_GT(upper.y, lower.y);
  EXPECT_EQ(upper.x, lower.x);
}

TEST(TernUtils, numbersThatAreNoneReadAsZero) {
  FramedVenue venue(Value::list({10, nullptr}), Value::list({"x", 10}));
  venue.maps->addMapToCollection(mapOfSize(1, 1000, 1000));
  expectNear(TernUtils::convertPointToLocalCoordinates({10, 0}, &venue), {1000, 1000}, 1e-9);
}

TEST(TernUtils, aVenueWithoutExtentGivesNumbersThatAreNotFinite) {
  FramedVenue venue(Value::list({10, 3}), Value::list({0, 3}));
  venue.maps->addMapToCollection(mapOfSize(1, 1000, 1000));
  EXPECT_FALSE(std::isfinite(TernUtils::convertPointToLocalCoordinates({3, 5}, &venue).x));
  EXPECT_FALSE(std::isfinite(TernUtils::convertPointToLocalCoordinates({4, 5}, &venue).x));
}

struct RefusedConversion {
  std::string from;
  std::string to;
  std::string line;
};

TEST(TernUtils, conversionsThatCannotBeAreLoggedAndGiveTheOrigin) {
  const FramedVenue venue = venueOfTenDegrees();
  const std::vector<RefusedConversion> refused = {
      {"", "EPSG:4326", "Invalid fromProjection entered."},
      {"epsg:4326", "nowhere", "Invalid fromProjection entered."},
      {"EPSG:4326", "nowhere", "Invalid toProjection entered."},
      {"tern:local", "", "Invalid toProjection entered."},
      {"EPSG:4326", "EPSG:4326", "Invalid input projections."},
      {"EPSG:3857", "EPSG:3857", "Invalid input projections."},
      {"tern:local", "tern:local", "Invalid input projections."}};
  for (const RefusedConversion& each : refused) {
    CapturedLog log;
    EXPECT_EQ(TernUtils::convertPoint({3, 4}, each.from, each.to, &venue), origin);
    EXPECT_THAT(log.take(), ElementsAre(each.line)) << each.from << " to " << each.to;
  }
}

TEST(TernUtils, localConversionsNeedAVenue) {
  for (const char* other : {"EPSG:4326", "EPSG:3857", "tern:local"}) {
    CapturedLog log;
    EXPECT_EQ(TernUtils::convertPoint({3, 4}, other, "tern:local", nullptr), origin);
    EXPECT_EQ(TernUtils::convertPoint({3, 4}, "tern:local", other, nullptr), origin);
    const char* line = "Valid venue must be passed in for tern:local conversion.";
    EXPECT_THAT(log.take(), ElementsAre(line, line));
  }
}

// Runs all four conversions through the venue's frame, which must each log that line.
void expectNoFrame(const TernVenueData* venue, const std::string& line) {
  CapturedLog log;
  EXPECT_EQ(TernUtils::convertPointToLocalCoordinates({3, 4}, venue), origin);
  EXPECT_EQ(TernUtils::convertPointFromEPSG3857ToLocal({3, 4}, venue), origin);
  EXPECT_EQ(TernUtils::convertToLatLongWithLocalCoordinates({3, 4}, venue), origin);
  EXPECT_EQ(TernUtils::convertPointFromLocalToEPSG3857({3, 4}, venue), origin);
  EXPECT_THAT(log.take(), ElementsAre(line, line, line, line));
}

TEST(TernUtils, aVenueWithoutTopLeftCornerHasNoFrame) {
  const std::string line = "Invalid top left reference coordinate.";
  const Value corner = Value::list({10, 0});
  expectNoFrame(nullptr, line);
  const TernVenueData empty;
  expectNoFrame(&empty, line);
  for (const Value& bad : {Value(), Value("10,0"), Value::list({10}), Value::list({10, 0, 0}),
                           Value::map({{"a", 1}, {"b", 2}})}) {
    const FramedVenue venue(bad, corner);
    expectNoFrame(&venue, line);
  }
}

TEST(TernUtils, aVenueWithoutBottomRightCornerHasNoFrame) {
  for (const Value& bad : {Value(), Value(nullptr), Value::list({10}), Value::list({1, 2, 3})}) {
    const FramedVenue venue(Value::list({10, 0}), bad);
    expectNoFrame(&venue, "Invalid bottom right reference coordinate.");
  }
}

TEST(TernUtils, aVenueWithoutMapHasNoFrame) {
  FramedVenue venue(Value::list({10, 0}), Value::list({0, 10}));
  expectNoFrame(&venue, "Invalid venue map.");
  venue.maps = nullptr;
  expectNoFrame(&venue, "Invalid venue map.");
}

TEST(TernUtils, distancesRoundToSinglePrecisionBeforeTheySquare) {
  EXPECT_EQ(TernUtils::sqr(3.0F), 9.0F);
  EXPECT_EQ(TernUtils::dist2({1, 2}, {4, 6}), 25.0F);
  EXPECT_EQ(TernUtils::distanceBetweenPoint1({1, 2}, {4, 6}), 5.0F);
  // The difference is taken in double precision: single would see two equal numbers.
  EXPECT_EQ(TernUtils::dist2({100000000.5, 0}, {100000000.25, 0}), 0.0625F);
  // 4097 * 4097 = 16785409 and does not fit into 24 bits.
  EXPECT_EQ(TernUtils::dist2({4097, 0}, {0, 0}), 16785408.0F);
  EXPECT_EQ(TernUtils::dist2({4097, 0}, {0, 1}), 16785408.0F);
}

struct Segment {
  TernCoordinate p1;
  TernCoordinate p2;
};
const Segment tenToTheRight{{0, 0}, {10, 0}};

TEST(TernUtils, aPointBeyondAnEndIsNearestToThatEnd) {
  TernCoordinate nearest{-1, -1};
  EXPECT_EQ(TernUtils::distanceToLine({-3, 4}, tenToTheRight.p1, tenToTheRight.p2, &nearest), 5.0F);
  EXPECT_EQ(nearest, tenToTheRight.p1);
  EXPECT_EQ(TernUtils::distanceToLine({13, -4}, tenToTheRight.p1, tenToTheRight.p2, &nearest),
            5.0F);
  EXPECT_EQ(nearest, tenToTheRight.p2);
}

TEST(TernUtils, aPointBesideTheSegmentIsNearestToItsFoot) {
  TernCoordinate nearest{-1, -1};
  EXPECT_EQ(TernUtils::distToSegmentSquared({2.5, 3}, tenToTheRight.p1, tenToTheRight.p2, &nearest),
            9.0F);
  EXPECT_EQ(nearest, (TernCoordinate{2.5, 0}));
}

TEST(TernUtils, theShareAlongTheSegmentIsOfSinglePrecision) {
  TernCoordinate nearest;
  TernUtils::distanceToLine({1, 1}, {0, 0}, {10, 0}, &nearest);
  EXPECT_EQ(nearest.x, 10 * static_cast<double>(0.1F));
  // Past the end by less than single precision tells: the end, as a foot.
  TernUtils::distanceToLine({10.0000001, 1}, {0, 0}, {10, 0}, &nearest);
  EXPECT_EQ(nearest, (TernCoordinate{10, 0}));
}

TEST(TernUtils, aSegmentWithoutLengthIsItsSecondEnd) {
  TernCoordinate nearest;
  EXPECT_EQ(TernUtils::distanceToLine({3, 4}, {0, 0}, {0, 0}, &nearest), 5.0F);
  EXPECT_EQ(nearest, origin);
  // So short that the square of its length is 0 in single precision.
  EXPECT_EQ(TernUtils::distToSegmentSquared({0, 0}, {0, 0}, {1e-30, 0}, &nearest), 0.0F);
  EXPECT_EQ(nearest.x, 1e-30);
}

TEST(TernUtils, theNearestPointNeedNotBeAskedFor) {
  EXPECT_EQ(TernUtils::distanceToLine({5, 2}, {0, 0}, {10, 0}, nullptr), 2.0F);
  EXPECT_EQ(TernUtils::distanceToLine({-2, 0}, {0, 0}, {10, 0}, nullptr), 2.0F);
  EXPECT_EQ(TernUtils::distanceToLine({12, 0}, {0, 0}, {10, 0}, nullptr), 2.0F);
  EXPECT_EQ(TernUtils::distanceToLine({2, 0}, {0, 0}, {0, 0}, nullptr), 2.0F);
}

double numberBetween(int low, int high) {
  return *rc::gen::inRange(low * 1000, high * 1000 + 1) / 1000.0;
}

TernCoordinate pointWithin(int bound) {
  return {numberBetween(-bound, bound), numberBetween(-bound, bound)};
}

RC_GTEST_PROP(TernUtils, metresAndBackGiveTheSameDegrees, ()) {
  const TernCoordinate degrees{numberBetween(-180, 180), numberBetween(-85, 85)};
  const auto metres = TernUtils::convertPoint(degrees, "EPSG:4326", "EPSG:3857", nullptr);
  const auto back = TernUtils::convertPoint(metres, "EPSG:3857", "EPSG:4326", nullptr);
  RC_ASSERT(std::abs(back.x - degrees.x) < 1e-9 && std::abs(back.y - degrees.y) < 1e-9);
}

RC_GTEST_PROP(TernUtils, localAndBackGiveTheSamePoint, ()) {
  const double left = numberBetween(-170, 160);
  const double bottom = numberBetween(-70, 60);
  FramedVenue venue(Value::list({bottom + numberBetween(1, 10), left}),
                    Value::list({bottom, left + numberBetween(1, 10)}));
  const int width = *rc::gen::inRange(1, 5000);
  const int height = *rc::gen::inRange(1, 5000);
  venue.maps->addMapToCollection(mapOfSize(1, width, height));
  const TernCoordinate local{numberBetween(0, width), numberBetween(0, height)};
  for (const char* projection : {"EPSG:4326", "EPSG:3857"}) {
    const auto outside = TernUtils::convertPoint(local, "tern:local", projection, &venue);
    const auto back = TernUtils::convertPoint(outside, projection, "tern:local", &venue);
    RC_ASSERT(std::abs(back.x - local.x) < 1e-7 && std::abs(back.y - local.y) < 1e-7);
  }
}

RC_GTEST_PROP(TernUtils, noPointOfTheSegmentIsNearerThanTheNearest, ()) {
  const TernCoordinate point = pointWithin(100);
  const Segment segment{pointWithin(100), pointWithin(100)};
  TernCoordinate nearest;
  const float distance = TernUtils::distanceToLine(point, segment.p1, segment.p2, &nearest);
  RC_ASSERT(distance == TernUtils::distanceBetweenPoint1(point, nearest));
  for (int step = 0; step <= 64; ++step) {
    const double share = step / 64.0;
    const TernCoordinate other{segment.p1.x + (segment.p2.x - segment.p1.x) * share,
                               segment.p1.y + (segment.p2.y - segment.p1.y) * share};
    RC_ASSERT(distance <= TernUtils::distanceBetweenPoint1(point, other) + 1e-3F);
  }
}

}  // namespace
}  // namespace tern
