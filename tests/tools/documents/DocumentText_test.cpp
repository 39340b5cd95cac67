#include "tools/documents/DocumentText.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::documents {
namespace {

TEST(DocumentText, recordsStandOnLinesOfTheirOwn) {
  DocumentText text;
  text.beginMap();
  text.field("id", 7);
  text.beginBatch("waypoints");
  text.item(Value::map({{"id", 1}}));
  text.item(Value::map({{"id", 2}}));
  text.endBatch();
  text.field("name", "Plaza");
  text.endMap();
  EXPECT_EQ(
      text.finished(),
      "{\"id\":7,\"waypoints\":{\"items\":[\n{\"id\":1},\n{\"id\":2}]},\"name\":\"Plaza\"}\n");
}

TEST(DocumentText, mapsNestAndReadBack) {
  DocumentText text;
  text.beginMap();
  text.beginBatch("floors");
  for (int i = 0; i < 2; ++i) {
    text.beginMap();
    text.field("id", i);
    text.beginMap("map");
    text.field("svg", "<svg a=\"b\"/>\n");
    text.beginBatch("uris");
    text.endBatch();
    text.endMap();
    text.endMap();
  }
  text.endBatch();
  text.endMap();
  const JsonResult read = decodeJson(text.finished());
  ASSERT_EQ(read.error, std::nullopt);
  const auto floors = read.value["floors"]["items"].items();
  ASSERT_EQ(floors.size(), 2U);
  EXPECT_EQ(floors[1]["id"].integer(), 1);
  EXPECT_EQ(floors[1]["map"]["svg"].text(), "<svg a=\"b\"/>\n");
  EXPECT_TRUE(floors[1]["map"]["uris"]["items"].isList());
}

TEST(DocumentText, keysAreEscaped) {
  DocumentText text;
  text.beginMap();
  text.field("a\"b", 1);
  text.endMap();
  EXPECT_EQ(text.finished(), "{\"a\\\"b\":1}\n");
}

}  // namespace
}  // namespace tern::documents
