#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/AskedCommand.hpp"
#include "tests/support/DrawnVenue.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// The bakery (destination 7) at A on the ground floor, the exit (amenity 7) at D above; a lift from
// B to D.
class NearestCommandTest : public testing::Test {
 protected:
  NearestCommandTest() {
    setLogSink([](std::string_view) {});
    Value document = test::twoFloorsVenueDocument();
    Value locations = Value::list();
    for (const auto& [map, letter] : {std::pair{1, 'B'}, {2, 'D'}}) {
      locations.append(
          Value::map({{"mapId", map}, {"waypointIds", Value::list({test::idOf(letter)})}}));
    }
    for (Value& type : document.find("pathTypes")->find("items")->items()) {
      if (type["name"].text() == "Lift") type.set("locations", locations);
    }
    venue_ = TernActiveVenue::initWithDictionary(std::move(document));
    addBuilding(*venue_, 1, test::twoFloorsBuildingDocument());
    attachWaypoints(*venue_);
    venue_->loadGridData();
    venue_->loadKDTree();
  }
  ~NearestCommandTest() override { setLogSink({}); }

  Answer ask(std::vector<std::string> words) {
    words.insert(words.begin(), "nearest");
    return std::get<Answer>(test::outcomeOf(words, venue_));
  }

  std::shared_ptr<TernActiveVenue> venue_;
};

TEST_F(NearestCommandTest, theCommandSaysWhereAndHowToGetThere) {
  EXPECT_THAT(ask({"--map", "1", "--at", "3,4", "--destination", "7"}).text,
              StartsWith("Bakery (waypoint 1) on Ground Floor, 1 m away\n"));
  EXPECT_THAT(ask({"--map", "1", "--at", "3,4", "--amenity", "7"}).text,
              testing::AllOf(StartsWith("Exit (waypoint 4) on First Floor\nFrom Bakery"),
                             HasSubstr("To Exit (waypoint 4)")));
}

TEST_F(NearestCommandTest, theCommandNamesTheConnectorsWhereThereIsNoRoute) {
  const auto grid = venue_->globalASGrid();
  grid->shouldBlockEntryToNode(*grid->getNodeById(4), true);
  EXPECT_EQ(ask({"--map", "1", "--at", "3,4", "--amenity", "7"}).text,
            "Exit (waypoint 4) on First Floor, by Lift\n");
}

TEST_F(NearestCommandTest, theCommandSaysWhatIsMissingAndExitsWithOne) {
  const Answer none = ask({"--map", "1", "--at", "3,4", "--destination", "99"});
  EXPECT_EQ(none.status, ExitStatus::nothingFound);
  EXPECT_EQ(none.text, "");
  EXPECT_EQ(none.remark, "there is no destination 99 in venue 1");
  EXPECT_EQ(ask({"--map", "9", "--at", "3,4", "--amenity", "7"}).remark,
            "there is no map 9 in venue 1");
}

// A route from a waypoint to itself is a line in the log, which counts the searches for it.
TEST_F(NearestCommandTest, theWayIsSearchedOnceAndOnlyWhereItIsShown) {
  int searches = 0;
  setLogSink([&](std::string_view line) { searches += line == "Tern SDK: NO PATH" ? 1 : 0; });
  ask({"--map", "1", "--at", "3,4", "--destination", "7"});
  EXPECT_EQ(searches, 1);
  ask({"--map", "1", "--at", "3,4", "--destination", "7", "--json"});
  EXPECT_EQ(searches, 1);
  setLogSink([](std::string_view) {});
}

TEST_F(NearestCommandTest, theCommandsJsonIsThatOfTheRequest) {
  EXPECT_EQ(
      ask({"--map", "1", "--at", "3,4", "--amenity", "7", "--json"}).text,
      TernAnswers(venue_).answerText(R"({"op":"nearest","map":1,"at":[3,4],"amenity":7})") + "\n");
}

TEST_F(NearestCommandTest, thePictureShowsTheWay) {
  const test::TemporaryFolder folder;
  const std::string file = folder.at("way.svg");
  ask({"--map", "1", "--at", "3,4", "--amenity", "7", "--picture", file});
  EXPECT_THAT(folder.read("way.svg"), HasSubstr("<svg"));
  ask({"--map", "9", "--at", "3,4", "--amenity", "7", "--picture", folder.at("none.svg")});
  EXPECT_EQ(folder.read("none.svg"), "");
}

TEST_F(NearestCommandTest, thePictureShowsThePointAskedFrom) {
  const test::TemporaryFolder folder;
  ask({"--map", "1", "--at", "3,4", "--amenity", "7", "--picture", folder.at("way.svg")});
  EXPECT_THAT(folder.read("way.svg"), HasSubstr("The point asked from"));
  EXPECT_THAT(folder.read("way.svg"), HasSubstr("stroke-dasharray"));
  // Where no way is needed, too.
  ask({"--map", "1", "--at", "3,4", "--destination", "7", "--picture", folder.at("here.svg")});
  EXPECT_THAT(folder.read("here.svg"), HasSubstr("stroke-dasharray"));
  EXPECT_THAT(folder.read("here.svg"), HasSubstr(">Bakery</text>"));
  ask({"--from", "1", "--amenity", "7", "--picture", folder.at("walk.svg")});
  EXPECT_THAT(folder.read("walk.svg"), testing::Not(HasSubstr("The point asked from")));
}

TEST_F(NearestCommandTest, byWalkTheRouteIsTold) {
  const Answer answer = ask({"--from", "1", "--amenity", "7"});
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_THAT(answer.text,
              testing::AllOf(StartsWith("Exit (waypoint 4) on First Floor\nFrom Bakery"),
                             HasSubstr("To Exit (waypoint 4)")));
}

TEST_F(NearestCommandTest, byWalkOneMayStandThereAlready) {
  const Answer answer = ask({"--from", "1", "--destination", "7"});
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_EQ(answer.text, "Bakery (waypoint 1) on Ground Floor, right there\n");
}

TEST_F(NearestCommandTest, byWalkOneMayFindNoWay) {
  const auto grid = venue_->globalASGrid();
  grid->shouldBlockEntryToNode(*grid->getNodeById(4), true);
  const Answer answer = ask({"--from", "1", "--amenity", "7"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text, "No way from Bakery (waypoint 1) to amenity 7\n");
  EXPECT_EQ(answer.remark, "");
}

TEST_F(NearestCommandTest, byWalkWhatIsUnknownIsNamed) {
  const Answer answer = ask({"--from", "98", "--amenity", "7"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text, "");
  EXPECT_EQ(answer.remark, "there is no waypoint 98 in venue 1");
  EXPECT_EQ(ask({"--from", "1", "--amenity", "99"}).remark, "there is no amenity 99 in venue 1");
}

TEST_F(NearestCommandTest, byWalkItsJsonIsThatOfTheRequest) {
  EXPECT_EQ(ask({"--from", "1", "--amenity", "7", "--accessibility", "2", "--json"}).text,
            TernAnswers(venue_).answerText(
                R"({"op":"nearestByWalk","from":1,"amenity":7,"accessibility":2})") +
                "\n");
}

TEST_F(NearestCommandTest, byWalkThePictureShowsTheWay) {
  const test::TemporaryFolder folder;
  ask({"--from", "1", "--amenity", "7", "--picture", folder.at("way.svg")});
  EXPECT_THAT(folder.read("way.svg"), HasSubstr("<svg"));
}

TEST(NearestWords, eitherAWaypointOrAPointIsWanted) {
  for (const std::vector<std::string>& place : {std::vector<std::string>{},
                                                {"--map", "1"},
                                                {"--at", "3,4"},
                                                {"--from", "1", "--map", "1"}}) {
    std::vector<std::string> words{"nearest", "--data", "d", "--amenity", "1"};
    words.insert(words.end(), place.begin(), place.end());
    EXPECT_THAT(std::get<Failure>(parseArguments(words)).sentence,
                HasSubstr("either --from W or --map M with --at X,Y is wanted"));
  }
  EXPECT_THAT(std::get<Failure>(parseArguments({"nearest", "--data", "d", "--map", "1", "--at",
                                                "3,4", "--amenity", "1", "--accessibility", "0"}))
                  .sentence,
              HasSubstr("--accessibility goes with --from W"));
}

TEST(NearestWords, exactlyOneElementIsWanted) {
  for (const std::vector<std::string>& more :
       {std::vector<std::string>{}, {"--amenity", "1", "--path-type", "2"}}) {
    std::vector<std::string> words{"nearest", "--data", "d", "--map", "1", "--at", "3,4"};
    words.insert(words.end(), more.begin(), more.end());
    EXPECT_THAT(std::get<Failure>(parseArguments(words)).sentence,
                HasSubstr("one of --destination D, --amenity A and --path-type P is wanted"));
  }
}

}  // namespace
}  // namespace tern::command
