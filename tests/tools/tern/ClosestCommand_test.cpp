#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "tests/support/AskedCommand.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

class ClosestCommandTest : public testing::Test {
 protected:
  ClosestCommandTest() {
    setLogSink([](std::string_view) {});
    addBuilding(*venue_, 1, test::twoFloorsBuildingDocument());
    attachWaypoints(*venue_);
    venue_->loadGridData();
    venue_->loadKDTree();
  }
  ~ClosestCommandTest() override { setLogSink({}); }

  Answer ask(const std::vector<std::string>& words) {
    return std::get<Answer>(test::outcomeOf(words, venue_));
  }

  std::shared_ptr<TernActiveVenue> venue_ =
      TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
};

TEST_F(ClosestCommandTest, jsonIsTheAnswerOfTheSameRequest) {
  EXPECT_EQ(ask({"closest", "--map", "1", "--at", "28,1", "--json"}).text, "{\"waypoint\":2}\n");
}

TEST_F(ClosestCommandTest, placeThatIsReachedIsRightThere) {
  EXPECT_EQ(ask({"closest", "--map", "1", "--at", "0,0"}).text,
            "Bakery (waypoint 1) on Ground Floor, right there\n");
}

TEST_F(ClosestCommandTest, closestSaysWhereAndHowFar) {
  EXPECT_EQ(ask({"closest", "--map", "1", "--at", "3,4"}).text,
            "Bakery (waypoint 1) on Ground Floor, 1 m away\n");
  EXPECT_EQ(ask({"closest", "--map", "2", "--at", "30,-2.5"}).text,
            "Exit (waypoint 4) on First Floor, 3 map units away\n");
}

TEST_F(ClosestCommandTest, unknownMapIsNamed) {
  const Answer answer = ask({"closest", "--map", "9", "--at", "0,0"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text, "");
  EXPECT_EQ(answer.remark, "there is no map 9 in venue 1");
}

}  // namespace
}  // namespace tern::command
