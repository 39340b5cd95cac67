#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/AskedCommand.hpp"

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
