#include "tools/tern/RouteFeatures.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "TernCoreKit/model/records/TernPosition.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/AskedCommand.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

using testing::ElementsAre;

class RouteFeaturesTest : public testing::Test {
 protected:
  // What --picture holds, each feature as "kind name mapId metres".
  std::vector<std::string> drawn(std::vector<std::string> words) {
    words.insert(words.end(), {"--picture", folder_.at("answer.geojson")});
    EXPECT_TRUE(std::holds_alternative<Answer>(test::outcomeOf(std::move(words), venue_)));
    features_ = decodeJson(folder_.read("answer.geojson")).value["features"];
    std::vector<std::string> told;
    for (const Value& feature : features_.items()) {
      const Value& of = feature["properties"];
      told.push_back(of["kind"].printed() + " " + of["name"].printed() + " " +
                     of["mapId"].printed() + " " + of["metres"].printed());
    }
    return told;
  }

  test::TemporaryFolder folder_;
  std::shared_ptr<TernActiveVenue> venue_ =
      test::loadVenue(test::twoFloorsVenueDocument(), test::twoFloorsBuildingDocument());
  Value features_;
};

TEST_F(RouteFeaturesTest, routeIsItsWalksWithItsEndsAndMovers) {
  EXPECT_THAT(
      drawn({"route", "--from", "1", "--to", "4"}),
      ElementsAre("start Bakery 1 0", "walk  1 6", "mover Stairs 1 6", "goal Exit 2 <null>"));
  EXPECT_EQ(encodeJson(features_.items()[1]["geometry"], JsonLayout::compact),
            R"({"type":"LineString","coordinates":[[0,10],[0.3,10],[0.6,10]]})");
  EXPECT_EQ(encodeJson(features_.items()[3]["geometry"], JsonLayout::compact),
            R"({"type":"Point","coordinates":[0.3,10]})");
}

TEST_F(RouteFeaturesTest, alternativesHaveOneStartAndOneGoal) {
  const auto told = drawn({"alternatives", "--from", "1", "--to", "4"});
  EXPECT_EQ(std::ranges::count(told, "start Bakery 1 0"), 1);
  EXPECT_EQ(std::ranges::count(told, "goal Exit 2 <null>"), 1);
  EXPECT_EQ(std::ranges::count(told, "walk Best route 1 6"), 1);
}

TEST_F(RouteFeaturesTest, tourHasAGoalForEachLeg) {
  EXPECT_THAT(drawn({"tour", "--from", "3", "--visit", "7"}),
              ElementsAre(testing::StartsWith("start "), "walk 1. Bakery 1 6", "goal Bakery 1 6"));
}

TEST_F(RouteFeaturesTest, nearestIsTheWayThere) {
  EXPECT_THAT(drawn({"nearest", "--from", "2", "--destination", "7"}),
              ElementsAre(testing::StartsWith("start "), "walk  1 3", "goal Bakery 1 3"));
}

TEST_F(RouteFeaturesTest, venueThatIsNotPlacedIsAFailureAndLeavesTheFile) {
  folder_.write("answer.geojson", "old");
  venue_->coordinates = Nested<TernPosition>();
  const Outcome outcome = test::outcomeOf(
      {"route", "--from", "1", "--to", "4", "--picture", folder_.at("answer.geojson")}, venue_);
  const auto* failure = std::get_if<Failure>(&outcome);
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->status, ExitStatus::wrongWords);
  EXPECT_EQ(failure->sentence,
            "--picture: the venue does not say where on the globe it lies; .svg and .html do "
            "without");
  EXPECT_EQ(folder_.read("answer.geojson"), "old");
}

TEST_F(RouteFeaturesTest, fileThatCannotBeWrittenIsAFailure) {
  const Outcome outcome = test::outcomeOf(
      {"route", "--from", "1", "--to", "4", "--picture", "/no/such/a.geojson"}, venue_);
  EXPECT_EQ(std::get<Failure>(outcome).sentence, "--picture: cannot write /no/such/a.geojson");
}

}  // namespace
}  // namespace tern::command
