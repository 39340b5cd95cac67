#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/AskedCommand.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;

// D stands alone.
const test::Drawing row{.floors = {{.lines = {"A  B  C     D"}}},
                        .paths = {"A-B", "B-C Stairs"},
                        .pathTypes = {{.name = "Stairs", .weight = 5, .accessibility = 60}},
                        .destinations = {{7, "A", "Attic"}, {8, "C", "Cellar"}}};

class MatrixCommandTest : public testing::Test {
 protected:
  Answer ask(std::vector<std::string> words) {
    words.insert(words.begin(), "matrix");
    return std::get<Answer>(test::outcomeOf(words, venue_));
  }

  std::shared_ptr<TernActiveVenue> venue_ = test::loadDrawnVenue(row);
};

TEST_F(MatrixCommandTest, everyPairIsTold) {
  const Answer answer = ask({"--from", "1,3", "--to", "3,1,4"});
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_EQ(answer.remark, "");
  EXPECT_EQ(answer.text,
            "From Attic (waypoint 1)\n"
            "  to Cellar (waypoint 3): 3 m, cost 35\n"
            "  to Attic (waypoint 1): cost 0\n"
            "  to near Cellar (waypoint 4) on map 1: no route\n"
            "From Cellar (waypoint 3)\n"
            "  to Cellar (waypoint 3): cost 0\n"
            "  to Attic (waypoint 1): 3 m, cost 35\n"
            "  to near Cellar (waypoint 4) on map 1: no route\n");
}

TEST_F(MatrixCommandTest, jsonIsTheAnswerOfTheSameRequest) {
  EXPECT_EQ(ask({"--from", "1,3", "--to", "3,1", "--accessibility", "0", "--json"}).text,
            TernAnswers(venue_).answerText(
                R"({"op":"matrix","from":[1,3],"to":[3,1],"accessibility":0})") +
                "\n");
}

TEST_F(MatrixCommandTest, withoutAnyRouteThereIsNothing) {
  const Answer answer = ask({"--from", "1", "--to", "3,4", "--accessibility", "0"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.remark, "");
  EXPECT_THAT(answer.text, HasSubstr("to Cellar (waypoint 3): no route\n"));
}

TEST_F(MatrixCommandTest, unknownWaypointsAreNamedOnce) {
  const Answer answer = ask({"--from", "1,98", "--to", "2,99,98"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.remark, "there is no waypoint 98 and no waypoint 99 in venue 1");
  EXPECT_THAT(answer.text, HasSubstr("to near Attic (waypoint 2) on map 1: 3 m, cost 30\n"));
}

TEST_F(MatrixCommandTest, tooManyPairsAreWrongWords) {
  std::string many = "1";
  for (int i = 0; i < 2'000; ++i) many += ",1";
  const Outcome outcome = test::outcomeOf({"matrix", "--from", many, "--to", many}, venue_);
  EXPECT_EQ(std::get<Failure>(outcome).status, ExitStatus::wrongWords);
  EXPECT_THAT(std::get<Failure>(outcome).sentence, HasSubstr("make 4004001 pairs"));
}

}  // namespace
}  // namespace tern::command
