#include "TernCoreKit/model/detail/Locations.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/model/RecordChecks.hpp"

namespace tern::test {
namespace {

using Locations = std::vector<std::shared_ptr<TernLocation>>;

TEST(Locations, takesOneForEachElement) {
  CapturedLog log;
  Value document = parsed(R"({"locations": [{"mapId": 1}, {"mapId": 2}], "id": 7})");
  Locations locations;
  EXPECT_TRUE(detail::takeLocations(document, locations));
  ASSERT_EQ(locations.size(), 2U);
  EXPECT_EQ(locations[1]->mapId, Value(2));
  EXPECT_EQ(document["id"], Value(7));
}

TEST(Locations, noneIsNoFailure) {
  CapturedLog log;
  for (const char* text : {"{}", R"({"locations": null})", R"({"locations": []})"}) {
    Value document = parsed(text);
    Locations locations;
    EXPECT_TRUE(detail::takeLocations(document, locations));
    EXPECT_TRUE(locations.empty());
  }
}

TEST(Locations, aValueThatIsNoListIsAFailure) {
  for (const char* text :
       {R"({"locations": 5})", R"({"locations": {}})", R"({"locations": "a"})"}) {
    CapturedLog log;
    Value document = parsed(text);
    Locations locations;
    EXPECT_FALSE(detail::takeLocations(document, locations));
    EXPECT_TRUE(locations.empty());
    EXPECT_THAT(log.take(),
                testing::ElementsAre("Tern SDK: \"locations\" of a record is not a list"));
  }
}

}  // namespace
}  // namespace tern::test
