#include "TernCoreKit/model/records/TernMap.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

// A map with the given drawing whose document says 10 by 20.
std::shared_ptr<TernMap> drawn(Value svg) {
  return TernMap::initWithDictionary(
      Value::map({{"svg", std::move(svg)}, {"width", 10}, {"height", 20}}));
}

TEST(TernMap, sizeIsThatOfTheViewBox) {
  CapturedLog log;
  const auto map = drawn("<svg viewBox=\"0 0 1200 800.5\"><path d='M0 0'/></svg>");
  EXPECT_EQ(map->width, Value(1200));
  EXPECT_EQ(map->height, Value(800.5));
}

TEST(TernMap, anSvgWithoutViewBoxLeavesTheSizeOfTheDocument) {
  CapturedLog log;
  const auto map = drawn("<svg></svg>");
  EXPECT_EQ(map->width, Value(10));
  EXPECT_EQ(map->height, Value(20));
  EXPECT_TRUE(made<TernMap>(R"({"svg": "<svg/>"})")->width.isAbsent());
}

TEST(TernMap, anAbsentOrNullSvgLeavesTheSizeOfTheDocument) {
  CapturedLog log;
  EXPECT_EQ(drawn(Value())->width, Value(10));
  EXPECT_EQ(drawn(nullptr)->width, Value(10));
  EXPECT_EQ(made<TernMap>(R"({"width": 5})")->width, Value(5));
}

TEST(TernMap, anSvgThatIsNoTextIsLoggedAndTheMapBuilt) {
  for (const Value& svg : {Value(5), Value(true), Value::list(), Value::map()}) {
    CapturedLog log;
    const auto map = drawn(svg);
    EXPECT_EQ(map->width, Value(10));
    EXPECT_EQ(map->svg, svg);
    EXPECT_THAT(log.take(), testing::ElementsAre("Tern SDK: \"svg\" of TernMap is not a text"));
  }
}

TEST(TernMap, unknownKeysAreIgnored) {
  CapturedLog log;
  const auto map = made<TernMap>(R"({"colour": 1, "id": 3, "paths": {"items": [{"id": 8}]},
      "svg": "<svg viewBox=\"0 0 3 4\">", "layers": [], "mmPerPixel": 12})");
  EXPECT_EQ(map->id, Value(3));
  EXPECT_EQ(map->mmPerPixel, Value(12));
  EXPECT_EQ(map->width, Value(3));
  ASSERT_TRUE(map->paths);
  EXPECT_EQ(map->paths->getCount(), 1U);
}

TEST(TernMap, aCopyCarriesTheDrawingButNotTheResources) {
  CapturedLog log;
  const auto map = made<TernMap>(R"({"svg": "<svg/>", "uris": {"items": []}})");
  const auto copy = map->copyWithZone();
  EXPECT_EQ(copy->svg, Value("<svg/>"));
  EXPECT_FALSE(copy->uris);
  EXPECT_TRUE(copy->uris.plain().isAbsent());
}

TEST(TernMap, theDrawingIsNotCopiedOnTheWayIn) {
  Value document = Value::map({{"svg", std::string(100000, ' ')}});
  const char* text = document["svg"].text().data();
  EXPECT_EQ(TernMap::initWithDictionary(std::move(document))->svg.text().data(), text);
}

}  // namespace
}  // namespace tern::test
