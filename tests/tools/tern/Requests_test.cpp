#include "tools/tern/Requests.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/CapturedLog.hpp"

namespace tern::command {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// Two floors with a lift (level 0) and stairs (level 2) between them; E stands alone.
const test::Drawing twoFloors{.floors = {{.lines = {"A  B  C", "", "E"}}, {.lines = {"   D"}}},
                              .paths = {"A-B", "B-C", "B-D lift", "C-D stairs"},
                              .pathTypes = {{.name = "lift", .weight = 500},
                                            {.name = "stairs", .weight = 5, .accessibility = 2}}};

class RequestsTest : public testing::Test {
 protected:
  std::string answer(std::string request) {
    return encodeJson(requests_.answerText(std::move(request)), JsonLayout::compact);
  }
  // The message of an answer that is a refusal.
  std::string refusal(std::string request) {
    const Value error = requests_.answerText(std::move(request))["error"];
    EXPECT_EQ(error["code"].text(), "TN006");
    EXPECT_EQ(error["description"].text(),
              "User passes incorrect object/primitive value into function.");
    return std::string(error["message"].text());
  }
  // The ids of a route's points, segment after segment.
  std::string pointsOf(std::string request) {
    const Value answer = requests_.answerText(std::move(request));
    std::string points;
    for (const Value& segment : answer["route"].items()) {
      points += encodeJson(segment["points"], JsonLayout::compact);
    }
    return points;
  }

  test::CapturedLog log_;
  Requests requests_{test::loadDrawnVenue(twoFloors)};
};

TEST_F(RequestsTest, routeIsAListOfSegments) {
  EXPECT_EQ(answer(R"({"op":"route","from":1,"to":3})"),
            R"({"route":[{"mapId":1,"mover":1,"cost":60,"pixelDistance":60,)"
            R"("mmDistance":6000,"points":[1,2,3],)"
            R"("mapPoints":[[0,0],[30,0],[60,0]]}]})");
}

TEST_F(RequestsTest, routeHonoursTheLevelWhichIsEveryonesWhenLeftOut) {
  EXPECT_EQ(pointsOf(R"({"op":"route","from":1,"to":4})"), "[1,2,3][4]");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":1,"to":4,"accessibility":100})"), "[1,2,3][4]");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":1,"to":4,"accessibility":1})"), "[1,2][4]");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":1,"to":4,"accessibility":-1})"), "");
}

TEST_F(RequestsTest, routeIsEmptyWhereThereIsNone) {
  for (const auto* request :
       {R"({"op":"route","from":1,"to":5})", R"({"op":"route","from":1,"to":1})",
        R"({"op":"route","from":1,"to":99})", R"({"op":"route","from":99,"to":1})",
        R"({"op":"route","from":4294967297,"to":2})"}) {
    EXPECT_EQ(answer(request), R"({"route":[]})") << request;
  }
  EXPECT_THAT(log_.take(), ElementsAre("Tern SDK: NO PATH"));  // from a waypoint to itself
}

TEST_F(RequestsTest, routeToAnyTakesTheCheapestAndPassesOverUnknownIds) {
  EXPECT_EQ(pointsOf(R"({"op":"routeToAny","from":1,"to":[99,3,2,3]})"), "[1,2]");
  EXPECT_EQ(answer(R"({"op":"routeToAny","from":1,"to":[99]})"), R"({"route":[]})");
  EXPECT_EQ(answer(R"({"op":"routeToAny","from":1,"to":[]})"), R"({"route":[]})");
  EXPECT_EQ(answer(R"({"op":"routeToAny","from":99,"to":[1]})"), R"({"route":[]})");
}

TEST_F(RequestsTest, closestIsTheNearestOnThatMap) {
  EXPECT_EQ(answer(R"({"op":"closest","map":1,"at":[28,3.5]})"), R"({"waypoint":2})");
  EXPECT_EQ(answer(R"({"op":"closest","map":2,"at":[0,0]})"), R"({"waypoint":4})");
  EXPECT_EQ(answer(R"({"op":"closest","map":9,"at":[0,0]})"), R"({"waypoint":null})");
}

TEST_F(RequestsTest, closestByRouteIsTheCandidateWithTheShortestWay) {
  EXPECT_EQ(answer(R"({"op":"closestByRoute","candidates":[3,99,2,5],"to":1})"),
            R"({"waypoint":2})");
  EXPECT_EQ(answer(R"({"op":"closestByRoute","candidates":[3,1],"to":1})"), R"({"waypoint":1})");
  EXPECT_EQ(answer(R"({"op":"closestByRoute","candidates":[5],"to":1})"), R"({"waypoint":null})");
  EXPECT_EQ(answer(R"({"op":"closestByRoute","candidates":[1],"to":99})"), R"({"waypoint":null})");
  EXPECT_EQ(answer(R"({"op":"closestByRoute","candidates":[],"to":1})"), R"({"waypoint":null})");
}

TEST_F(RequestsTest, convertGivesWhatTheLibraryGives) {
  EXPECT_EQ(answer(R"({"op":"convert","point":[180,0],"from":"EPSG:4326","to":"EPSG:3857"})"),
            R"({"point":[20037508.342789244,-7.081154551613622e-10]})");
  EXPECT_EQ(answer(R"({"op":"convert","point":[1,2],"from":"EPSG:4326","to":"EPSG:4326"})"),
            R"({"point":[0,0]})");
  EXPECT_EQ(answer(R"({"op":"convert","point":[1,2],"from":"moon","to":"EPSG:4326"})"),
            R"({"point":[0,0]})");
  EXPECT_THAT(log_.take(),
              ElementsAre("Invalid input projections.", "Invalid fromProjection entered."));
}

TEST_F(RequestsTest, numberThatIsNotFiniteIsNull) {
  EXPECT_EQ(answer(R"({"op":"convert","point":[1e308,0],"from":"EPSG:4326","to":"EPSG:3857"})"),
            R"({"point":[null,-7.081154551613622e-10]})");
}

TEST_F(RequestsTest, centerIsAPoint) {
  EXPECT_EQ(answer(R"({"op":"center"})"), R"({"point":[0,0]})");  // the drawing has no corners
  EXPECT_THAT(log_.take(), ElementsAre("Invalid top left reference coordinate."));
}

TEST_F(RequestsTest, neighborsStandInTheNodesOrder) {
  EXPECT_EQ(answer(R"({"op":"neighbors","node":2})"),
            R"({"neighbors":[)"
            R"({"id":1,"cost":30,"distance":30,"accessibility":0,"edge":1,"pathType":1},)"
            R"({"id":3,"cost":30,"distance":30,"accessibility":0,"edge":2,"pathType":1},)"
            R"({"id":4,"cost":50500,"distance":1,"accessibility":0,"edge":3,"pathType":2}]})");
  EXPECT_EQ(answer(R"({"op":"neighbors","node":5})"), R"({"neighbors":[]})");
  EXPECT_EQ(answer(R"({"op":"neighbors","node":99})"), R"({"neighbors":[]})");
}

TEST_F(RequestsTest, blockedEdgeStaysBlockedUntilItIsLifted) {
  EXPECT_EQ(answer(R"({"op":"blockEdge","from":3,"to":4,"blocked":true})"), R"({"ok":true})");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":1,"to":4})"), "[1,2][4]");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":4,"to":3})"), "[4][3]");  // the other way is open
  EXPECT_EQ(answer(R"({"op":"blockEdge","from":3,"to":4,"blocked":false})"), R"({"ok":true})");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":1,"to":4})"), "[1,2,3][4]");
}

TEST_F(RequestsTest, blockedEntryLeavesTheWayOut) {
  EXPECT_EQ(answer(R"({"op":"blockEntry","node":4,"blocked":true})"), R"({"ok":true})");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":1,"to":4})"), "");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":4,"to":3})"), "[4][3]");
  EXPECT_EQ(answer(R"({"op":"blockEntry","node":4,"blocked":false})"), R"({"ok":true})");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":1,"to":4})"), "[1,2,3][4]");
}

TEST_F(RequestsTest, blockedExitLeavesTheWayIn) {
  EXPECT_EQ(answer(R"({"op":"blockExit","node":4,"blocked":true})"), R"({"ok":true})");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":4,"to":3})"), "");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":1,"to":4})"), "[1,2,3][4]");
}

TEST_F(RequestsTest, blockOfAnUnknownWaypointIsDone) {
  EXPECT_EQ(answer(R"({"op":"blockEdge","from":1,"to":99,"blocked":true})"), R"({"ok":true})");
  EXPECT_EQ(answer(R"({"op":"blockEdge","from":99,"to":1,"blocked":true})"), R"({"ok":true})");
  EXPECT_EQ(answer(R"({"op":"blockEntry","node":99,"blocked":true})"), R"({"ok":true})");
  EXPECT_EQ(answer(R"({"op":"blockExit","node":99,"blocked":true})"), R"({"ok":true})");
}

TEST_F(RequestsTest, requestThatIsRefusedBlocksNothing) {
  EXPECT_EQ(refusal(R"({"op":"blockEdge","from":3,"to":4})"), "blockEdge: \"blocked\" is missing");
  EXPECT_EQ(refusal(R"({"op":"blockExit","node":3,"blocked":1})"),
            "blockExit: \"blocked\" must be true or false");
  EXPECT_EQ(pointsOf(R"({"op":"route","from":1,"to":4})"), "[1,2,3][4]");
}

TEST_F(RequestsTest, answerRepeatsTheIdWhateverItIs) {
  EXPECT_EQ(answer(R"({"id":7,"op":"route","from":1,"to":5})"), R"({"id":7,"route":[]})");
  EXPECT_EQ(answer(R"({"op":"route","from":1,"to":5,"id":"a\u0000\n"})"),
            R"({"id":"a\u0000\n","route":[]})");
  EXPECT_EQ(answer(R"({"op":"route","from":1,"to":5,"id":null})"), R"({"id":null,"route":[]})");
  EXPECT_EQ(answer(R"({"op":"route","from":1,"to":5,"id":{"a":[1,2.5]}})"),
            R"({"id":{"a":[1,2.5]},"route":[]})");
  EXPECT_EQ(requests_.answerText(R"({"id":7,"op":"fly"})")["id"], Value(7));
  EXPECT_EQ(requests_.answerText(R"({"id":7})")["id"], Value(7));
}

TEST_F(RequestsTest, missingOrWrongFieldIsNamed) {
  EXPECT_EQ(refusal(R"({"op":"route","to":1})"), "route: \"from\" is missing");
  EXPECT_EQ(refusal(R"({"op":"route","from":1})"), "route: \"to\" is missing");
  EXPECT_EQ(refusal(R"({"op":"route","from":"1","to":2})"),
            "route: \"from\" must be a whole number");
  EXPECT_EQ(refusal(R"({"op":"route","from":1,"to":2,"accessibility":null})"),
            "route: \"accessibility\" must be a whole number");
  EXPECT_EQ(refusal(R"({"op":"routeToAny","from":1,"to":2})"),
            "routeToAny: \"to\" must be a list of whole numbers");
  EXPECT_EQ(refusal(R"({"op":"closest","map":1,"at":[1]})"),
            "closest: \"at\" must be a list of two numbers");
  EXPECT_EQ(refusal(R"({"op":"closestByRoute","to":1})"),
            "closestByRoute: \"candidates\" is missing");
  EXPECT_EQ(refusal(R"({"op":"convert","point":[1,2],"from":1,"to":"EPSG:3857"})"),
            "convert: \"from\" must be a text");
  EXPECT_EQ(refusal(R"({"op":"neighbors"})"), "neighbors: \"node\" is missing");
}

TEST_F(RequestsTest, operationIsNeededAndMustBeKnown) {
  EXPECT_EQ(refusal("{}"), "\"op\" is missing");
  EXPECT_EQ(refusal(R"({"op":7})"), "\"op\" must be a text");
  EXPECT_EQ(refusal(R"({"op":"fly"})"),
            "\"op\" is \"fly\", which is not known; there are route, routeToAny, alternatives, "
            "tour, solve, "
            "closest, closestByRoute, nearest, nearestOnMap, convert, center, blockEdge, "
            "blockEntry, blockExit, neighbors");
  EXPECT_THAT(refusal(R"({"op":")" + std::string(1000, 'x') + "\"}"),
              HasSubstr(std::string(40, 'x') + "...\", which"));
  EXPECT_THAT(refusal(R"({"op":"Route","from":1,"to":2})"), HasSubstr("\"Route\""));
}

TEST_F(RequestsTest, textThatIsNoRequestIsRefused) {
  for (const auto* text : {"[]", "12", "\"route\"", "null"}) {
    EXPECT_EQ(refusal(text), "a request is a JSON object with an \"op\"") << text;
  }
  for (const auto* text : {"{", "route", "{}{}", "{\"op\":1e999}", "\xFF", "{\"op\":\"\xC3\"}"}) {
    EXPECT_THAT(refusal(text), HasSubstr("not JSON: ")) << text;
  }
  EXPECT_THAT(refusal(std::string(100'000, '[')), HasSubstr("not JSON: "));
}

}  // namespace
}  // namespace tern::command
