#include "tools/tern/GeoFeatures.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "TernCoreKit/model/records/TernPosition.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;

// Its first map is 1000 units wide and high, and 10 degrees.
std::shared_ptr<TernActiveVenue> placedVenue() {
  return test::loadVenue(test::twoFloorsVenueDocument(), test::twoFloorsBuildingDocument());
}

void place(TernActiveVenue& venue, Value topLeft, Value bottomRight) {
  Value corners = Value::map({{"topLeft", std::move(topLeft)}});
  corners.set("bottomRight", std::move(bottomRight));
  venue.coordinates = TernPosition::initWithDictionary(corners);
}

std::string objectionOf(const TernActiveVenue& venue) {
  GeoFeatures features;
  const std::vector<TernCoordinate> points{{0, 0}, {500, 500}};
  features.add({.kind = "walk", .venue = venue, .mapId = 1}, points);
  EXPECT_EQ(features.collection()["features"].size(), features.objection() ? 0U : 1U);
  return features.objection().value_or("");
}

TEST(GeoFeatures, pointsBecomeLongitudesAndLatitudes) {
  const auto venue = placedVenue();
  GeoFeatures features;
  const std::vector<TernCoordinate> points{{0, 0}, {1000, 1000}};
  features.add({"walk", *venue, 1, "Way", 12.34567}, points);
  features.add({.kind = "start", .venue = *venue, .mapId = 2}, {points.data(), 1});
  EXPECT_EQ(encodeJson(features.collection(), JsonLayout::compact),
            R"({"type":"FeatureCollection","features":[)"
            R"({"type":"Feature","geometry":{"type":"LineString","coordinates":[[0,10],[10,0]]},)"
            R"("properties":{"kind":"walk","name":"Way","floor":"Ground Floor","mapId":1,)"
            R"("building":null,"metres":12.346}},)"
            R"({"type":"Feature","geometry":{"type":"Point","coordinates":[0,10]},)"
            R"("properties":{"kind":"start","floor":"First Floor","mapId":2,)"
            R"("building":null,"metres":null}}]})");
}

TEST(GeoFeatures, degreesHaveEightDecimalsAtMost) {
  const auto venue = placedVenue();
  GeoFeatures features;
  const TernCoordinate point{100.0 / 3, 200.0 / 3};
  features.add({.kind = "start", .venue = *venue, .mapId = 1}, {&point, 1});
  const Value position = features.collection()["features"].items()[0]["geometry"]["coordinates"];
  EXPECT_EQ(position.items()[0], Value(0.33333333));
  EXPECT_LE(position.items()[1].printed().size(), std::string("9.33333333").size());
}

TEST(GeoFeatures, nothingIsMadeOfNoPoint) {
  const auto venue = placedVenue();
  GeoFeatures features;
  features.add({.kind = "walk", .venue = *venue, .mapId = 1}, {});
  EXPECT_EQ(features.collection()["features"].size(), 0U);
  EXPECT_FALSE(features.objection());
}

TEST(GeoFeatures, venueThatIsNotPlacedIsAnObjection) {
  const auto venue = placedVenue();
  EXPECT_EQ(objectionOf(*venue), "");
  const Value corner = Value::list({10, 0});
  for (const Value& other :
       {Value(), Value(nullptr), Value::list({0}), Value::list({"0", "10"}), Value::list({91, 5}),
        Value::list({5, 181}), Value::list({-90, 5}), Value::list({10, 5}), Value::list({5, 0})}) {
    place(*venue, corner, other);
    EXPECT_THAT(objectionOf(*venue), HasSubstr("does not say where")) << other.printed();
    place(*venue, other, corner);
    EXPECT_THAT(objectionOf(*venue), HasSubstr("does not say where")) << other.printed();
  }
  venue->coordinates = Nested<TernPosition>();
  EXPECT_THAT(objectionOf(*venue), HasSubstr("does not say where"));
}

TEST(GeoFeatures, venueWhoseFirstMapHasNoSizeIsAnObjection) {
  const auto venue =
      test::loadDrawnVenue({.floors = {{.lines = {"A"}}}, .paths = {}, .pathTypes = {}});
  place(*venue, Value::list({10, 0}), Value::list({0, 10}));
  EXPECT_THAT(objectionOf(*venue), HasSubstr("does not say where"));
}

TEST(GeoFeatures, pointOffTheGlobeIsAnObjectionToAll) {
  const auto venue = placedVenue();
  GeoFeatures features;
  const std::vector<TernCoordinate> points{{0, 0}, {100'000, 0}};
  features.add({.kind = "walk", .venue = *venue, .mapId = 1}, points);
  EXPECT_THAT(features.objection().value_or(""), HasSubstr("not lie on the globe"));
  features.add({.kind = "start", .venue = *venue, .mapId = 1}, {points.data(), 1});
  EXPECT_EQ(features.collection()["features"].size(), 0U);
}

}  // namespace
}  // namespace tern::command
