#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/AskedCommand.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tools/tern/ReachDrawing.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;

const test::Drawing fourInARow{.floors = {{.lines = {"A  B  C  D"}, .name = "Ground Floor"}},
                               .paths = {"A-B", "B-C", "C-D Stairs"},
                               .pathTypes = {{.name = "Stairs", .weight = 5, .accessibility = 60}},
                               .destinations = {{7, "A", "Attic"}, {8, "C", "Cellar"}}};

class ReachCommandTest : public testing::Test {
 protected:
  Answer ask(std::vector<std::string> words) {
    words.insert(words.begin(), "reach");
    return std::get<Answer>(test::outcomeOf(words, venue_));
  }

  std::shared_ptr<TernActiveVenue> venue_ = test::loadDrawnVenue(fourInARow);
};

TEST_F(ReachCommandTest, placesWithinReachAreToldInTheOrderOfCost) {
  const Answer answer = ask({"--from", "1", "--metres", "6.2"});
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_EQ(answer.remark, "");
  EXPECT_EQ(answer.text,
            "Within 6.2 m of Attic (waypoint 1): 4 waypoints\n"
            "  Attic (waypoint 1) on Ground Floor\n"
            "  Cellar (waypoint 3) on Ground Floor, 6 m\n");
}

TEST_F(ReachCommandTest, costMayLimitInPlaceOfMetresAndBesideThem) {
  EXPECT_THAT(ask({"--from", "1,3", "--cost", "5"}).text,
              testing::StartsWith("Within cost 5 of Attic (waypoint 1), Cellar (waypoint 3): 3 w"));
  EXPECT_THAT(ask({"--from", "1", "--metres", "9", "--cost", "1"}).text,
              testing::StartsWith("Within 9 m and cost 1 of Attic (waypoint 1): 1 waypoint\n"));
}

TEST_F(ReachCommandTest, pictureHasALineForEachWalkedLink) {
  const test::TemporaryFolder folder;
  const auto linksOf = [&](std::vector<std::string> words) {
    words.insert(words.end(), {"--picture", folder.at("r.svg")});
    ask(words);
    return folder.read("r.svg");
  };
  // A to B to C is walked within the first two steps of 2 m, B to C to D by stairs.
  const std::string all = linksOf({"--from", "1", "--metres", "6.2"});
  EXPECT_THAT(all, HasSubstr("Within 6.2 m: 4 waypoints"));
  EXPECT_THAT(all, HasSubstr("2 m"));
  EXPECT_THAT(linksOf({"--from", "1,4", "--metres", "0"}), HasSubstr("Within 0 m"));
}

TEST_F(ReachCommandTest, linksAreThoseThatTheCheapestRoutesWalk) {
  const Value request =
      Value::map({{"op", "reach"}, {"from", Value::list({1, 4})}, {"metres", 99}});
  const Value answer = TernAnswers(venue_).answer(request);
  const picture::ReachPicture drawn = reachPictureOf(*venue_, request, answer);
  ASSERT_EQ(drawn.starts.size(), 2U);
  std::string links;
  for (const picture::WalkedLink& link : drawn.links) {
    links += std::to_string(std::lround(link.from.x)) + "-" +
             std::to_string(std::lround(link.to.x)) + " by " +
             std::to_string(std::lround(link.toMetres)) + "; ";
  }
  // C costs 5 from D, by stairs, and 6 from A; the stairs count no metres.
  EXPECT_EQ(links, "0-30 by 3; 90-60 by 0; ");
}

TEST_F(ReachCommandTest, jsonIsTheAnswerOfTheSameRequest) {
  EXPECT_EQ(
      ask({"--from", "1", "--metres", "6", "--accessibility", "0", "--json"}).text,
      TernAnswers(venue_).answerText(R"({"op":"reach","from":1,"metres":6,"accessibility":0})") +
          "\n");
}

TEST_F(ReachCommandTest, unknownWaypointsAreNamed) {
  const Answer answer = ask({"--from", "98", "--metres", "6"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text, "");
  EXPECT_EQ(answer.remark, "there is no waypoint 98 in venue 1");
}

TEST(ReachWords, aLimitIsWanted) {
  EXPECT_THAT(std::get<Failure>(parseArguments({"reach", "--data", "d", "--from", "1"})).sentence,
              HasSubstr("--metres N or --cost C is wanted"));
}

}  // namespace
}  // namespace tern::command
