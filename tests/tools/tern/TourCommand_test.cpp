#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/AskedCommand.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;

// Two floors and a lift at B and F; H stands alone.
std::shared_ptr<TernActiveVenue> twoFloors() {
  const test::Drawing drawing{
      .floors = {{.lines = {"A  B  C  D"}, .name = "Ground Floor"},
                 {.lines = {"E  F  G     H"}, .name = "First Floor"}},
      .paths = {"A-B", "B-C", "C-D", "E-F", "F-G", "B-F Lift", "F-B Lift"},
      .pathTypes = {{.name = "Lift", .weight = 5}},
      .destinations =
          {{7, "D", "Diner"}, {8, "A", "Attic"}, {9, "G", "Garden"}, {10, "H"}, {11}, {12, "E"}},
      .connectors = {{2, "B F"}}};
  Value document = test::drawVenueDocument(drawing);
  // One on a map that is not there.
  for (Value& item : document.find("destinations")->find("items")->items()) {
    if (item["id"] != Value(11)) continue;
    item.set(
        "locations",
        Value::list({Value::map({{"mapId", 3}, {"waypointIds", Value::list({test::idOf('H')})}})}));
  }
  return test::loadVenue(std::move(document), test::drawBuildingDocument(drawing));
}

class TourCommandTest : public testing::Test {
 protected:
  Answer ask(std::vector<std::string> words) {
    words.insert(words.begin(), "tour");
    return std::get<Answer>(test::outcomeOf(words, venue_));
  }
  Answer visit(const std::string& from, const std::string& destinations) {
    return ask({"--from", from, "--visit", destinations});
  }

  test::CapturedLog log_;
  std::shared_ptr<TernActiveVenue> venue_ = twoFloors();
};

TEST_F(TourCommandTest, stopsAreToldInOrderWithTheWayToEach) {
  const Answer answer = visit("2", "7,9,8");
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_EQ(answer.remark, "");
  EXPECT_EQ(answer.text,
            "From near Attic (waypoint 2) on Ground Floor\n"
            "  Ground Floor: walk 3 m\n"
            "1. Attic (waypoint 1)\n"
            "  Ground Floor: walk 9 m\n"
            "2. Diner (waypoint 4)\n"
            "  Ground Floor: walk 6 m\n"
            "  Lift up to First Floor\n"
            "  First Floor: walk 3 m\n"
            "3. Garden (waypoint 7)\n"
            "21 m in all\n");
}

TEST_F(TourCommandTest, destinationThatTheStartServesNeedsNoWay) {
  const Answer answer = visit("1", "8,8");
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_EQ(answer.text, "From Attic (waypoint 1)\n");
}

TEST_F(TourCommandTest, unreachableDestinationsAreNamedOnceBehindTheTour) {
  const Answer answer = visit("1", "11,7,11");
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_THAT(answer.text, HasSubstr("1. Diner (waypoint 4)\n9 m in all\n"));
  EXPECT_THAT(answer.text,
              testing::EndsWith("Left out: destination 11 (no way to it at accessibility 100)\n"));
}

TEST_F(TourCommandTest, stopWithoutAWayToItIsLeftOut) {
  EXPECT_EQ(visit("1", "10").text,
            "From Attic (waypoint 1)\n"
            "Left out: destination 10 (no way to it at accessibility 100)\n");
  EXPECT_EQ(visit("8", "9,12").text,
            "From near Garden (waypoint 8) on First Floor\n"
            "Left out: Garden (destination 9; no way to it at accessibility 100)\n"
            "Left out: destination 12 (no way to it at accessibility 100)\n");
}

TEST_F(TourCommandTest, whatIsLeftOutIsNamedWithTheLevelThatReachesIt) {
  venue_ = test::loadDrawnVenue({.floors = {{.lines = {"A  B"}}, {.lines = {"C"}}},
                                 .paths = {"A-B", "B-C Stairs", "B-C Ramp"},
                                 .pathTypes = {{.name = "Ramp", .accessibility = 90},
                                               {.name = "Stairs", .accessibility = 60}},
                                 .destinations = {{7, "C", "Coral Books"}, {8, "B"}}});
  EXPECT_THAT(ask({"--from", "1", "--visit", "7,8", "--accessibility", "0"}).text,
              testing::EndsWith("\n3 m in all\nLeft out: Coral Books (destination 7; no way to "
                                "it at accessibility 0; 60 reaches it)\n"));
  EXPECT_THAT(ask({"--from", "1", "--visit", "7,8", "--accessibility", "60"}).text,
              testing::Not(HasSubstr("Left out")));
}

TEST_F(TourCommandTest, nothingReachableIsNothingFound) {
  const Answer answer = visit("2", "11");
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text, "Left out: destination 11 (no way to it at accessibility 100)\n");
  EXPECT_EQ(answer.remark, "");
}

TEST_F(TourCommandTest, unknownNamesAreSaid) {
  EXPECT_EQ(visit("1", "7,98,99,98").remark,
            "there is no destination 98 and no destination 99 in venue 1");
  EXPECT_EQ(visit("1", "7,98").status, ExitStatus::answered);
  const Answer answer = visit("77", "7,98");
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text, "");
  EXPECT_EQ(answer.remark,
            "there is no waypoint 77 in venue 1; there is no destination 98 in venue 1");
}

TEST_F(TourCommandTest, jsonIsTheAnswerOfTheSameRequest) {
  EXPECT_EQ(ask({"--from", "2", "--visit", "7,9", "--accessibility", "1", "--json"}).text,
            TernAnswers(venue_).answerText(
                R"({"op":"tour","from":2,"destinations":[7,9],"accessibility":1})") +
                "\n");
  EXPECT_EQ(ask({"--from", "77", "--visit", "7", "--json"}).text,
            "{\"legs\":[],\"destinations\":[]}\n");
}

TEST_F(TourCommandTest, pictureShowsEveryLeg) {
  const test::TemporaryFolder folder;
  ask({"--from", "2", "--visit", "7,9,8", "--picture", folder.at("t.svg")});
  for (const char* title : {"1. Attic", "2. Diner", "3. Garden"}) {
    EXPECT_THAT(folder.read("t.svg"), HasSubstr(title));
  }
}

TEST_F(TourCommandTest, withoutAWayThereIsNoPicture) {
  const test::TemporaryFolder folder;
  const Answer answer = ask({"--from", "1", "--visit", "8", "--picture", folder.at("t.svg")});
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_EQ(answer.remark, "--picture: there is no way to draw");
  EXPECT_EQ(folder.read("t.svg"), "");
}

TEST_F(TourCommandTest, pictureThatCannotBeWrittenIsAFailure) {
  const Outcome outcome = test::outcomeOf(
      {"tour", "--from", "2", "--visit", "7", "--picture", "/no/such/t.svg"}, venue_);
  EXPECT_EQ(std::get<Failure>(outcome).sentence, "--picture: cannot write /no/such/t.svg");
}

TEST_F(TourCommandTest, destinationsOfTheCallHaveACommaBetweenThem) {
  for (const char* text : {"", "7,", ",7", "7,,8"}) {
    const auto parsed = parseArguments({"tour", "--data", "d", "--from", "2", "--visit", text});
    EXPECT_EQ(std::get<Failure>(parsed).status, ExitStatus::wrongWords) << text;
  }
}

}  // namespace
}  // namespace tern::command
