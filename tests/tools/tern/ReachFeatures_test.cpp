#include "tools/tern/ReachFeatures.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/AskedCommand.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

using testing::ElementsAre;

class ReachFeaturesTest : public testing::Test {
 protected:
  // Each feature as "kind coordinates metres".
  std::vector<std::string> drawn(std::vector<std::string> words) {
    const std::string file = folder_.at("reach.geojson");
    words.insert(words.begin(), "reach");
    words.insert(words.end(), {"--picture", file});
    EXPECT_TRUE(std::holds_alternative<Answer>(test::outcomeOf(std::move(words), venue_)));
    std::vector<std::string> told;
    const Value collection = decodeJson(folder_.read("reach.geojson")).value;
    for (const Value& feature : collection["features"].items()) {
      told.push_back(feature["properties"]["kind"].printed() + " " +
                     encodeJson(feature["geometry"]["coordinates"], JsonLayout::compact) + " " +
                     feature["properties"]["metres"].printed());
    }
    return told;
  }

  test::TemporaryFolder folder_;
  std::shared_ptr<TernActiveVenue> venue_ =
      test::loadVenue(test::twoFloorsVenueDocument(), test::twoFloorsBuildingDocument());
};

TEST_F(ReachFeaturesTest, linksBetweenReachedWaypointsAreLinesOnce) {
  EXPECT_THAT(drawn({"--from", "1", "--metres", "3"}),
              ElementsAre("start [0,10] 0", "walk [[0,10],[0.3,10]] 3"));
  EXPECT_THAT(drawn({"--from", "1,3", "--metres", "4"}),
              ElementsAre("start [0,10] 0", "start [0.6,10] 0", "walk [[0,10],[0.3,10]] 3",
                          "walk [[0.3,10],[0.6,10]] 3"));
}

TEST_F(ReachFeaturesTest, linksBeyondTheLevelAreNone) {
  const auto told = drawn({"--from", "1", "--metres", "100", "--accessibility", "-1"});
  EXPECT_THAT(told, ElementsAre("start [0,10] 0"));
}

TEST_F(ReachFeaturesTest, unknownStartWritesNothing) {
  const std::string file = folder_.at("reach.geojson");
  const Outcome outcome =
      test::outcomeOf({"reach", "--from", "98", "--metres", "4", "--picture", file}, venue_);
  EXPECT_EQ(std::get<Answer>(outcome).status, ExitStatus::nothingFound);
  EXPECT_FALSE(std::filesystem::exists(file));
}

}  // namespace
}  // namespace tern::command
