#include "tools/tern/PlaceNames.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/AskedCommand.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;

//   A--B--C--D    ground        E F G stand alone; Gate is at E, which has no way on, and at C
//   E  F  G
//   H--I          first
const test::Drawing namedPlaces{
    .floors = {{.lines = {"A  B  C  D", "E  F  G"}, .name = "Ground"},
               {.lines = {"H  I"}, .name = "First"}},
    .paths = {"A-B", "B-C", "C-D", "D-H Lift", "H-I"},
    .pathTypes = {{.name = "Lift"}},
    .destinations = {{.id = 7, .at = "A", .name = "Café Ştefan"},
                     {.id = 8, .at = "EC D", .name = "Gate"},
                     {.id = 9, .at = "B", .name = "Bank"},
                     {.id = 10, .at = "I", .name = "BANK"},
                     {.id = 11, .name = "Nowhere"},
                     {.id = 12, .at = "F", .name = "99"},
                     {.id = 13, .at = "G", .name = "Bread, Butter, Jam"},
                     {.id = 14, .at = "D", .name = "Bread"},
                     {.id = 15, .at = "I", .name = "4"},
                     {.id = 16, .at = "A", .name = "カラス"},
                     {.id = 17, .at = "B", .name = "ガラス"},
                     {.id = 18, .at = "C", .name = "Toilets"}},
    .amenities = {{.id = 2, .at = "B H", .name = "Toilets"}}};

class PlaceNames : public testing::Test {
 protected:
  Arguments callOf(std::vector<std::string> words) const {
    words.insert(words.begin() + 1, {"--data", "unread"});
    return std::get<Arguments>(parseArguments(words));
  }
  Value requestOf(const std::vector<std::string>& words) const {
    auto asked = withIds(callOf(words), {venue_});
    const auto* wrong = std::get_if<Failure>(&asked);
    return wrong != nullptr ? Value(wrong->sentence) : std::get<Arguments>(asked).request;
  }
  Value start(const std::string& name) const {
    return requestOf({"route", "--from", name, "--to", "1"})["from"];
  }
  Value goal(const std::string& name) const {
    return requestOf({"route", "--from", "1", "--to", name})["to"];
  }
  Value visited(const std::string& names) const {
    return requestOf({"tour", "--from", "1", "--visit", names})["destinations"];
  }
  Failure refusalOf(const std::vector<std::string>& words) const {
    return std::get<Failure>(withIds(callOf(words), {venue_}));
  }

  std::shared_ptr<TernActiveVenue> venue_ = test::loadDrawnVenue(namedPlaces);
};

TEST_F(PlaceNames, idsStayAsTheyAre) {
  EXPECT_EQ(start("2"), Value(2));
  EXPECT_EQ(goal("777"), Value(777));
  EXPECT_EQ(visited("9,777,9"), Value::list({9, 777, 9}));
}

TEST_F(PlaceNames, neitherCaseNorAccentsNorWidthCount) {
  for (const char* name :
       {"Café Ştefan", "CAFE STEFAN", "cafe  ștefan ", "ＣＡＦＥ ｓｔｅｆａｎ"}) {
    EXPECT_EQ(start(name), Value(1)) << name;
  }
  EXPECT_EQ(goal("ｶﾞﾗｽ"), Value(2));
  EXPECT_EQ(goal("カラス"), Value(1));
}

TEST_F(PlaceNames, startIsTheFirstWaypointWithAWayOn) { EXPECT_EQ(start("gate"), Value(3)); }

TEST_F(PlaceNames, startWithoutAnyWayOnIsTheFirstWaypoint) {
  EXPECT_EQ(start("Bread, Butter, Jam"), Value(7));
}

TEST_F(PlaceNames, goalIsAllWaypointsOfThePlace) {
  EXPECT_EQ(goal("gate"), Value::list({5, 3, 4}));
}

TEST_F(PlaceNames, aNumberIsAnIdFirstAndElseAName) {
  EXPECT_EQ(goal("4"), Value(4));
  EXPECT_EQ(goal("99"), Value(6));
  EXPECT_EQ(visited("4"), Value::list({15}));
  EXPECT_EQ(visited("9"), Value::list({9}));
}

TEST_F(PlaceNames, aDestinationOrAnAmenityIsMeantWhereOneIsAsked) {
  EXPECT_EQ(visited("toilets"), Value::list({18}));
  EXPECT_EQ(requestOf({"nearest", "--map", "1", "--at", "0,0", "--amenity", "TOILETS"})["amenity"],
            Value(2));
  EXPECT_EQ(
      requestOf({"nearest", "--map", "1", "--at", "0,0", "--destination", "bread"})["destination"],
      Value(14));
}

TEST_F(PlaceNames, aNameOfAListMayHoldCommas) {
  EXPECT_EQ(visited("7,Bread, Butter, Jam,bread,Gate"), Value::list({7, 13, 14, 8}));
  EXPECT_EQ(visited("bread, butter, jam"), Value::list({13}));
}

TEST_F(PlaceNames, aNameThatFitsSeveralListsThem) {
  const Failure several = refusalOf({"route", "--from", "bank", "--to", "1"});
  EXPECT_EQ(several.status, ExitStatus::wrongWords);
  EXPECT_EQ(several.sentence,
            "--from: \"bank\" is the name of several; say which by its id: "
            "Bank (destination 9) on Ground (waypoint 2); BANK (destination 10) on First (waypoint "
            "9)");
  EXPECT_EQ(refusalOf({"route", "--from", "1", "--to", "Toilets"}).status, ExitStatus::wrongWords);
}

TEST_F(PlaceNames, aNameThatFitsNoneNamesTheClosest) {
  const Failure none = refusalOf({"route", "--from", "Cafe Stefann", "--to", "1"});
  EXPECT_EQ(none.status, ExitStatus::nothingFound);
  EXPECT_EQ(none.error.code, "TN007");
  EXPECT_EQ(none.sentence,
            "--from: there is no place named \"Cafe Stefann\" in venue 1; the closest is Café "
            "Ştefan (destination 7) on Ground (waypoint 1)");
  EXPECT_THAT(refusalOf({"tour", "--from", "1", "--visit", "7,gatte"}).sentence,
              HasSubstr("--visit: there is no destination named \"gatte\""));
}

TEST_F(PlaceNames, aPlaceWithoutAWaypointIsNoWaypoint) {
  const Failure none = refusalOf({"route", "--from", "nowhere", "--to", "1"});
  EXPECT_EQ(none.status, ExitStatus::nothingFound);
  EXPECT_EQ(none.sentence,
            "--from: Nowhere (destination 11), which is placed nowhere; there is no way to it");
  EXPECT_EQ(visited("nowhere"), Value::list({11}));
}

TEST_F(PlaceNames, severalVenuesAreSearchedTogether) {
  const auto call = callOf({"route", "--from", "gate", "--to", "1"});
  const auto failure = std::get<Failure>(withIds(call, {venue_, venue_}));
  EXPECT_EQ(failure.status, ExitStatus::wrongWords);
  EXPECT_THAT(failure.sentence, HasSubstr(" in venue 1; "));
}

TEST_F(PlaceNames, routeToAPlaceIsTheCheapestToAnyOfItsWaypoints) {
  const auto toPlace =
      std::get<Answer>(test::outcomeOf({"route", "--from", "9", "--to", "gate", "--json"}, venue_));
  EXPECT_EQ(toPlace.text,
            TernAnswers(venue_).answerText(R"({"op":"routeToAny","from":9,"to":[5,3,4]})") + "\n");
  EXPECT_THAT(toPlace.text, HasSubstr("\"points\":[4]"));
}

TEST_F(PlaceNames, alternativesLeadToTheCheapestWaypointOfAPlace) {
  const auto toPlace = std::get<Answer>(
      test::outcomeOf({"alternatives", "--from", "9", "--to", "gate", "--json"}, venue_));
  const auto toId = std::get<Answer>(
      test::outcomeOf({"alternatives", "--from", "9", "--to", "4", "--json"}, venue_));
  EXPECT_EQ(toPlace.text, toId.text);
}

TEST_F(PlaceNames, aGoalThatNoRouteReachesIsNamed) {
  const auto answer =
      std::get<Answer>(test::outcomeOf({"route", "--from", "6", "--to", "gate"}, venue_));
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_THAT(answer.text, HasSubstr("No route from 99 (waypoint 6) to Gate (waypoint 5)"));
}

}  // namespace
}  // namespace tern::command
