#include "tools/documents/MapTemplate.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::documents {
namespace {

constexpr MapTemplate dusk{
    .id = "dusk", .name = "Dusk", .background = "#222222", .label = "#eeeeee"};

TEST(MapTemplate, isADocumentOfItsColours) {
  const Value document = decodeJson(documentOf(dusk)).value;
  EXPECT_EQ(document["id"].text(), "dusk");
  EXPECT_EQ(document["name"].text(), "Dusk");
  EXPECT_EQ(document["style"]["background"].text(), "#222222");
  EXPECT_EQ(document["style"]["label"].text(), "#eeeeee");
  EXPECT_EQ(document["style"]["route"].text(), "#2f6fde");
}

TEST(MapTemplate, saysWhenItWasMadeWhereThatIsKnown) {
  EXPECT_TRUE(decodeJson(documentOf(dusk)).value["generatedAt"].isAbsent());
  MapTemplate dated = dusk;
  dated.generatedAt = 7;
  EXPECT_EQ(decodeJson(documentOf(dated)).value["generatedAt"].integer(), 7);
}

TEST(MapTemplate, liesWhereItIsAskedFor) { EXPECT_EQ(pathOf(dusk), "map-template/dusk/full.json"); }

}  // namespace
}  // namespace tern::documents
