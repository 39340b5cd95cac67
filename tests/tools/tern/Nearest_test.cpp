#include "tools/tern/Nearest.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/DrawnVenue.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tools/tern/NearestCommand.hpp"
#include "tools/tern/Requests.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// The bakery (destination 7) at A on the ground floor, the exit (amenity 7) at D above; a lift from
// B to D.
class NearestTest : public testing::Test {
 protected:
  NearestTest() {
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
  ~NearestTest() override { setLogSink({}); }

  std::string answer(std::string request) {
    return encodeJson(Requests(venue_).answerText(std::move(request)), JsonLayout::compact);
  }
  Answer ask(std::vector<std::string> words) {
    words.insert(words.begin(), {"nearest", "--data", "d"});
    return std::get<Answer>(answerNearest(std::get<Arguments>(parseArguments(words)), *venue_));
  }

  std::shared_ptr<TernActiveVenue> venue_;
};

TEST_F(NearestTest, namesWaypointElementAndConnectors) {
  EXPECT_EQ(
      answer(R"({"op":"nearest","map":1,"at":[40,0],"destination":7})"),
      R"({"waypoint":1,"element":{"kind":"destination","id":7},"connectors":[],"error":null})");
  EXPECT_EQ(
      answer(R"({"op":"nearest","map":1,"at":[40,0],"amenity":7})"),
      R"({"waypoint":4,"element":{"kind":"amenity","id":7},"connectors":[2,4],"error":null})");
  EXPECT_EQ(answer(R"({"op":"nearest","map":2,"at":[0,0],"pathType":2})"),
            R"({"waypoint":4,"element":{"kind":"pathType","id":2},"connectors":[],"error":null})");
}

TEST_F(NearestTest, ofSeveralKindsTheDestinationIsSearched) {
  EXPECT_THAT(answer(R"({"op":"nearest","map":1,"at":[0,0],"amenity":7,"destination":7})"),
              HasSubstr(R"("kind":"destination")"));
}

TEST_F(NearestTest, whatIsUnknownIsTheLibrarysOwnError) {
  EXPECT_THAT(answer(R"({"op":"nearest","map":1,"at":[0,0],"destination":99})"),
              StartsWith(R"({"waypoint":null,"element":null,"connectors":[],"error":)"
                         R"({"code":"TN006","message":"element must be TernDestination)"));
  EXPECT_THAT(answer(R"({"op":"nearest","map":9,"at":[0,0],"destination":7})"),
              HasSubstr("current floor or map not found"));
}

TEST_F(NearestTest, nearestOnMapMeasuresTheWay) {
  EXPECT_EQ(answer(R"({"op":"nearestOnMap","from":1,"toMap":2,"amenities":[99,7]})"),
            R"({"waypoint":4,"totalDistance":30,"connectors":[2,4],"error":null})");
}

TEST_F(NearestTest, nearestOnMapAnswersNullWithTheErrorOfThisSearch) {
  const std::string none = R"({"waypoint":null,"totalDistance":null,"connectors":[],"error":)";
  EXPECT_THAT(answer(R"({"op":"nearestOnMap","from":99,"toMap":2,"amenities":[7]})"),
              StartsWith(none + R"({"code":"TN006","message":"current floor)"));
  EXPECT_THAT(answer(R"({"op":"nearestOnMap","from":1,"toMap":2,"destinations":[99]})"),
              StartsWith(none + R"({"code":"TN006","message":"element must be)"));
  EXPECT_EQ(answer(R"({"op":"nearestOnMap","from":1,"toMap":2,"destinations":[7]})"),
            none + "null}");
}

TEST_F(NearestTest, aMissingFieldIsNamed) {
  EXPECT_THAT(answer(R"({"op":"nearest","map":1,"at":[0,0]})"),
              HasSubstr(R"(nearest: \"destination\" is missing)"));
  EXPECT_THAT(answer(R"({"op":"nearestOnMap","from":1,"toMap":2})"),
              HasSubstr(R"(nearestOnMap: \"destinations\" is missing)"));
}

TEST_F(NearestTest, theCommandSaysWhereAndHowToGetThere) {
  EXPECT_THAT(ask({"--map", "1", "--at", "3,4", "--destination", "7"}).text,
              StartsWith("Bakery (waypoint 1) on Ground Floor, 0.5 m away\n"));
  EXPECT_THAT(ask({"--map", "1", "--at", "3,4", "--amenity", "7"}).text,
              testing::AllOf(StartsWith("Exit (waypoint 4) on First Floor\nFrom Bakery"),
                             HasSubstr("To Exit (waypoint 4)")));
}

TEST_F(NearestTest, theCommandNamesTheConnectorsWhereThereIsNoRoute) {
  const auto grid = venue_->globalASGrid();
  grid->shouldBlockEntryToNode(*grid->getNodeById(4), true);
  EXPECT_EQ(ask({"--map", "1", "--at", "3,4", "--amenity", "7"}).text,
            "Exit (waypoint 4) on First Floor, by Lift\n");
}

TEST_F(NearestTest, theCommandSaysWhatIsMissingAndExitsWithOne) {
  const Answer none = ask({"--map", "1", "--at", "3,4", "--destination", "99"});
  EXPECT_EQ(none.status, ExitStatus::nothingFound);
  EXPECT_EQ(none.text, "");
  EXPECT_EQ(none.remark, "there is no destination 99 in venue 1");
  EXPECT_EQ(ask({"--map", "9", "--at", "3,4", "--amenity", "7"}).remark,
            "there is no map 9 in venue 1");
}

TEST_F(NearestTest, theCommandsJsonIsThatOfTheRequest) {
  EXPECT_EQ(ask({"--map", "1", "--at", "3,4", "--amenity", "7", "--json"}).text,
            answer(R"({"op":"nearest","map":1,"at":[3,4],"amenity":7})") + "\n");
}

TEST_F(NearestTest, thePictureShowsTheWay) {
  const test::TemporaryFolder folder;
  const std::string file = folder.at("way.svg");
  ask({"--map", "1", "--at", "3,4", "--amenity", "7", "--picture", file});
  EXPECT_THAT(folder.read("way.svg"), HasSubstr("<svg"));
  ask({"--map", "9", "--at", "3,4", "--amenity", "7", "--picture", folder.at("none.svg")});
  EXPECT_EQ(folder.read("none.svg"), "");
}

TEST(NearestWords, exactlyOneElementIsWanted) {
  for (const std::vector<std::string>& more :
       {std::vector<std::string>{}, {"--amenity", "1", "--path-type", "2"}}) {
    std::vector<std::string> words{"nearest", "--data", "d", "--map", "1", "--at", "3,4"};
    words.insert(words.end(), more.begin(), more.end());
    EXPECT_THAT(std::get<Failure>(parseArguments(words)).error.message,
                HasSubstr("one of --destination D, --amenity A and --path-type P is wanted"));
  }
}

}  // namespace
}  // namespace tern::command
