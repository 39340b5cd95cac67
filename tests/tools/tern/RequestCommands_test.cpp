#include "tools/tern/RequestCommands.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class RequestCommandsTest : public testing::Test {
 protected:
  RequestCommandsTest() {
    setLogSink([](std::string_view) {});
    addBuilding(*venue_, 1, test::twoFloorsBuildingDocument());
    attachWaypoints(*venue_);
    venue_->loadGridData();
    venue_->loadKDTree();
  }
  ~RequestCommandsTest() override { setLogSink({}); }

  Answer ask(std::vector<std::string> words) {
    words.insert(words.begin() + 1, {"--data", "d"});
    const Outcome outcome = answerCall(std::get<Arguments>(parseArguments(words)), venue_);
    return std::get<Answer>(outcome);
  }

  std::shared_ptr<TernActiveVenue> venue_ =
      TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
};

TEST_F(RequestCommandsTest, jsonIsTheAnswerOfTheSameRequest) {
  TernAnswers answers(venue_);
  EXPECT_EQ(ask({"route", "--from", "1", "--to", "4", "--accessibility", "1", "--json"}).text,
            answers.answerText(R"({"op":"route","from":1,"to":4,"accessibility":1})") + "\n");
  EXPECT_EQ(ask({"route", "--from", "1", "--to", "99", "--json"}).text, "{\"route\":[]}\n");
  EXPECT_EQ(ask({"closest", "--map", "1", "--at", "28,1", "--json"}).text, "{\"waypoint\":2}\n");
  EXPECT_EQ(
      ask({"convert", "--point", "0,10", "--from", "EPSG:4326", "--to", "tern:local", "--json"})
          .text,
      answers.answerText(
          R"({"op":"convert","point":[0,10],"from":"EPSG:4326","to":"tern:local"})") +
          "\n");
}

TEST_F(RequestCommandsTest, routeIsToldInWords) {
  const Answer answer = ask({"route", "--from", "1", "--to", "3"});
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_THAT(answer.text, StartsWith("From Bakery (waypoint 1)\n"));
}

TEST_F(RequestCommandsTest, noRouteIsSaid) {
  const Answer answer = ask({"route", "--from", "1", "--to", "5"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text, "No route from Bakery (waypoint 1) to waypoint 5\n");
  EXPECT_EQ(answer.remark, "");
}

TEST_F(RequestCommandsTest, unknownWaypointsAreNamed) {
  const auto remark = [&](const char* from, const char* to) {
    const Answer answer = ask({"route", "--from", from, "--to", to});
    EXPECT_EQ(answer.status, ExitStatus::nothingFound);
    EXPECT_EQ(answer.text, "");
    return answer.remark;
  };
  EXPECT_EQ(remark("1", "99"), "there is no waypoint 99 in venue 1");
  EXPECT_EQ(remark("98", "1"), "there is no waypoint 98 in venue 1");
  EXPECT_EQ(remark("98", "99"), "there is no waypoint 98 and no waypoint 99 in venue 1");
  EXPECT_EQ(remark("99", "99"), "there is no waypoint 99 in venue 1");
}

TEST_F(RequestCommandsTest, pictureIsDrawnBesideTheAnswer) {
  const test::TemporaryFolder folder;
  const auto draw = [&](const std::string& file) {
    return ask({"route", "--from", "1", "--to", "4", "--picture", file});
  };
  EXPECT_EQ(draw(folder.at("r.svg")).text, draw(folder.at("r.html")).text);
  EXPECT_THAT(folder.read("r.svg"), HasSubstr("<svg"));
  EXPECT_THAT(folder.read("r.svg"), HasSubstr("Bakery"));
  EXPECT_THAT(folder.read("r.html"), HasSubstr("<html"));
}

TEST_F(RequestCommandsTest, pictureThatCannotBeWrittenIsAFailure) {
  const Outcome outcome =
      answerCall(std::get<Arguments>(parseArguments({"route", "--data", "d", "--from", "1", "--to",
                                                     "4", "--picture", "/no/such/r.svg"})),
                 venue_);
  EXPECT_EQ(std::get<Failure>(outcome).status, ExitStatus::wrongWords);
  EXPECT_EQ(std::get<Failure>(outcome).error.message, "--picture: cannot write /no/such/r.svg");
}

// A route from a waypoint to itself is a line in the log, which counts the searches for it.
TEST_F(RequestCommandsTest, routeIsSearchedOnceForTextJsonAndPicture) {
  const test::TemporaryFolder folder;
  for (const std::vector<std::string>& more : {std::vector<std::string>{}, {"--json"}}) {
    int searches = 0;
    setLogSink([&](std::string_view line) { searches += line == "Tern SDK: NO PATH" ? 1 : 0; });
    std::vector<std::string> words{"route",     "--from",          "1", "--to", "1",
                                   "--picture", folder.at("r.svg")};
    words.insert(words.end(), more.begin(), more.end());
    ask(words);
    EXPECT_EQ(searches, 1);
    setLogSink([](std::string_view) {});
  }
}

TEST_F(RequestCommandsTest, placeThatIsReachedIsRightThere) {
  EXPECT_EQ(ask({"closest", "--map", "1", "--at", "0,0"}).text,
            "Bakery (waypoint 1) on Ground Floor, right there\n");
}

TEST_F(RequestCommandsTest, commandThatAsksNothingIsAnError) {
  Arguments call;
  call.command = "info";
  EXPECT_EQ(std::get<Failure>(answerCall(call, venue_)).error.message,
            "\"info\" asks nothing of a venue");
}

TEST_F(RequestCommandsTest, closestSaysWhereAndHowFar) {
  EXPECT_EQ(ask({"closest", "--map", "1", "--at", "3,4"}).text,
            "Bakery (waypoint 1) on Ground Floor, 1 m away\n");
  EXPECT_EQ(ask({"closest", "--map", "2", "--at", "30,-2.5"}).text,
            "Exit (waypoint 4) on First Floor, 3 map units away\n");
}

TEST_F(RequestCommandsTest, unknownMapIsNamed) {
  const Answer answer = ask({"closest", "--map", "9", "--at", "0,0"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text, "");
  EXPECT_EQ(answer.remark, "there is no map 9 in venue 1");
}

TEST_F(RequestCommandsTest, convertedPointCanBeAskedOnWith) {
  EXPECT_EQ(ask({"convert", "--point", "0,10", "--from", "EPSG:4326", "--to", "tern:local"}).text,
            "0,0\n");
  EXPECT_EQ(ask({"convert", "--point", "180,0", "--from", "EPSG:4326", "--to", "EPSG:3857"}).text,
            "20037508.342789244,-7.081154551613622e-10\n");
}

TEST_F(RequestCommandsTest, pointThatCannotBeConvertedIsNotAnswered) {
  venue_ = TernActiveVenue::initWithDictionary(Value::map({{"id", 1}}));
  venue_->loadGridData();
  venue_->loadKDTree();
  const Answer answer =
      ask({"convert", "--point", "0,10", "--from", "EPSG:4326", "--to", "tern:local"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text, "");
  EXPECT_EQ(answer.remark, "Invalid top left reference coordinate.");
}

}  // namespace
}  // namespace tern::command
