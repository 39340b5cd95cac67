#include "tools/import/source/GeoJson.hpp"

#include <gtest/gtest.h>

#include <string>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::imports {
namespace {

Value geometry(std::string_view type, std::string_view coordinates) {
  std::string text = "{\"type\":\"";
  text.append(type).append("\",\"coordinates\":").append(coordinates).append("}");
  JsonResult read = decodeJson(text);
  EXPECT_EQ(read.error, std::nullopt) << text;
  return std::move(read.value);
}

TEST(GeoJson, documentsAreInDegreesUnlessTheySay) {
  const auto plain = statedPlaneSystem(Value::map({}));
  ASSERT_TRUE(plain);
  EXPECT_EQ(globePoint(geometry("Point", "[139.5,35.5]"), *plain), (LonLat{139.5, 35.5}));
  const Value name = Value::map({{"name", "urn:ogc:def:crs:EPSG::6677"}});
  const Value document = Value::map({{"crs", Value::map({{"properties", name}})}});
  EXPECT_NEAR(globePoint(geometry("Point", "[0,0]"), *statedPlaneSystem(document))->latitude, 36,
              1e-9);
  const Value unknown = Value::map({{"name", "EPSG:1"}});
  EXPECT_FALSE(statedPlaneSystem(Value::map({{"crs", Value::map({{"properties", unknown}})}})));
}

TEST(GeoJson, heightsArePassedOver) {
  EXPECT_EQ(globePoint(geometry("Point", "[1,2,300]"), {}), (LonLat{1, 2}));
}

TEST(GeoJson, ringsLoseTheirLastPoint) {
  const auto polygons = globePolygons(
      geometry("Polygon", "[[[0,0],[1,0],[1,1],[0,0]],[[0,0],[1,0],[1,1],[0,0]]]"), {});
  ASSERT_TRUE(polygons);
  ASSERT_EQ(polygons->size(), 1U);
  ASSERT_EQ(polygons->front().size(), 2U);
  EXPECT_EQ(polygons->front().front().size(), 3U);
}

TEST(GeoJson, severalPolygonsAreOneShape) {
  const auto polygons = globePolygons(
      geometry("MultiPolygon", "[[[[0,0],[1,0],[1,1],[0,0]]],[[[5,5],[6,5],[6,6],[5,5]]]]"), {});
  ASSERT_TRUE(polygons);
  EXPECT_EQ(polygons->size(), 2U);
}

TEST(GeoJson, linesHaveTwoPointsAtLeast) {
  EXPECT_EQ(globeLine(geometry("LineString", "[[0,0],[1,1]]"), {})->size(), 2U);
  EXPECT_EQ(globeLine(geometry("MultiLineString", "[[[0,0],[1,1]]]"), {})->size(), 2U);
  EXPECT_FALSE(globeLine(geometry("LineString", "[[0,0]]"), {}));
  EXPECT_FALSE(globeLine(geometry("MultiLineString", "[[[0,0],[1,1]],[[2,2],[3,3]]]"), {}));
}

TEST(GeoJson, linesThatFollowOneAnotherAreOne) {
  const auto line = globeLine(geometry("MultiLineString", "[[[0,0],[1,1]],[[1,1],[2,1]]]"), {});
  ASSERT_TRUE(line);
  EXPECT_EQ(*line, (GlobeLine{{0, 0}, {1, 1}, {2, 1}}));
}

TEST(GeoJson, allOfSeveralLinesCount) {
  const Value two = geometry("MultiLineString", "[[[0,0],[1,1]],[[2,2],[3,3]]]");
  EXPECT_EQ(globeLines(two, {}).size(), 2U);
  EXPECT_EQ(globeLines(geometry("LineString", "[[0,0],[1,1]]"), {}).size(), 1U);
  const Value half = geometry("MultiLineString", "[[[0,0],[1,1]],[[2,2]]]");
  EXPECT_TRUE(globeLines(half, {}).empty());
  EXPECT_TRUE(globeLines(geometry("Point", "[0,0]"), {}).empty());
}

TEST(GeoJson, oneOfSeveralPointsIsAPoint) {
  EXPECT_EQ(globePoint(geometry("MultiPoint", "[[1,2]]"), {}), (LonLat{1, 2}));
  EXPECT_FALSE(globePoint(geometry("MultiPoint", "[[1,2],[3,4]]"), {}));
  EXPECT_FALSE(globePoint(geometry("MultiPoint", "[]"), {}));
}

TEST(GeoJson, whatIsNoShapeIsNone) {
  for (const char* coordinates : {"null", "[]", "[1]", "[\"a\",2]", "{}", "[[1,2]]", "[900,2]"}) {
    EXPECT_FALSE(globePoint(geometry("Point", coordinates), {})) << coordinates;
  }
  for (const char* coordinates : {"null", "[]", "[[]]", "[[[0,0],[1,1],[0,0]]]", "[[0,0]]",
                                  "[[[0,0],[1,0],[1,1],[999,0]]]"}) {
    EXPECT_FALSE(globePolygons(geometry("Polygon", coordinates), {})) << coordinates;
  }
  EXPECT_FALSE(globePoint(Value(), {}));
  EXPECT_FALSE(globePoint(geometry("LineString", "[1,2]"), {}));
}

}  // namespace
}  // namespace tern::imports
