#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "tests/support/AskedCommand.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class RouteCommandTest : public testing::Test {
 protected:
  RouteCommandTest() {
    setLogSink([](std::string_view) {});
    addBuilding(*venue_, 1, test::twoFloorsBuildingDocument());
    attachWaypoints(*venue_);
    venue_->loadGridData();
    venue_->loadKDTree();
  }
  ~RouteCommandTest() override { setLogSink({}); }

  Answer ask(const std::vector<std::string>& words) {
    return std::get<Answer>(test::outcomeOf(words, venue_));
  }

  std::shared_ptr<TernActiveVenue> venue_ =
      TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
};

TEST_F(RouteCommandTest, jsonIsTheAnswerOfTheSameRequest) {
  TernAnswers answers(venue_);
  EXPECT_EQ(ask({"route", "--from", "1", "--to", "4", "--accessibility", "1", "--json"}).text,
            answers.answerText(R"({"op":"route","from":1,"to":4,"accessibility":1})") + "\n");
  EXPECT_EQ(ask({"route", "--from", "1", "--to", "99", "--json"}).text, "{\"route\":[]}\n");
}

TEST_F(RouteCommandTest, routeIsToldInWords) {
  const Answer answer = ask({"route", "--from", "1", "--to", "3"});
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_THAT(answer.text, StartsWith("From Bakery (waypoint 1)\n"));
}

TEST_F(RouteCommandTest, jsonWithStepsIsTheAnswerToDirections) {
  EXPECT_EQ(
      ask({"route", "--from", "1", "--to", "4", "--json", "--steps", "--language", "de"}).text,
      TernAnswers(venue_).answerText(
          R"({"op":"directions","from":1,"to":4,"accessibility":100,"language":"de"})") +
          "\n");
}

TEST_F(RouteCommandTest, stepsOfNoRouteAreNone) {
  EXPECT_EQ(ask({"route", "--from", "1", "--to", "99", "--json", "--steps"}).text,
            "{\"route\":[],\"steps\":[],\"mm\":0,\"seconds\":0}\n");
}

TEST_F(RouteCommandTest, stepsAreToldInTheLanguageThatIsAskedFor) {
  EXPECT_THAT(ask({"route", "--from", "1", "--to", "4", "--language", "de"}).text,
              HasSubstr("1. Start bei Bakery, 6 m\n"));
  EXPECT_THAT(ask({"route", "--from", "1", "--to", "4", "--language", "en-US"}).text,
              HasSubstr("1. Start at Bakery, 20 ft\n"));
  EXPECT_THAT(ask({"route", "--from", "1", "--to", "4", "--language", "xx"}).text,
              HasSubstr("1. Start at Bakery, 6 m\n"));
}

TEST_F(RouteCommandTest, noRouteIsSaid) {
  const Answer answer = ask({"route", "--from", "1", "--to", "5"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text,
            "No route from Bakery (waypoint 1) to near Bakery (waypoint 5) on Ground Floor\n");
  EXPECT_EQ(answer.remark, "");
}

TEST_F(RouteCommandTest, fromAWaypointToItselfNoWayIsNeeded) {
  const Answer answer = ask({"route", "--from", "1", "--to", "1"});
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_EQ(answer.text, "Bakery (waypoint 1): you are there already\n");
  EXPECT_EQ(answer.remark, "");
  const Answer json = ask({"route", "--from", "1", "--to", "1", "--json"});
  EXPECT_EQ(json.status, ExitStatus::answered);
  EXPECT_EQ(json.text, "{\"route\":[]}\n");
}

TEST_F(RouteCommandTest, unknownWaypointsAreNamed) {
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

TEST_F(RouteCommandTest, pictureIsDrawnBesideTheAnswer) {
  const test::TemporaryFolder folder;
  const auto draw = [&](const std::string& file) {
    return ask({"route", "--from", "1", "--to", "4", "--picture", file});
  };
  EXPECT_EQ(draw(folder.at("r.svg")).text, draw(folder.at("r.html")).text);
  EXPECT_THAT(folder.read("r.svg"), HasSubstr("<svg"));
  EXPECT_THAT(folder.read("r.svg"), HasSubstr("Bakery"));
  EXPECT_THAT(folder.read("r.html"), HasSubstr("<html"));
}

TEST_F(RouteCommandTest, pictureThatCannotBeWrittenIsAFailure) {
  const Outcome outcome =
      test::outcomeOf({"route", "--from", "1", "--to", "4", "--picture", "/no/such/r.svg"}, venue_);
  EXPECT_EQ(std::get<Failure>(outcome).status, ExitStatus::wrongWords);
  EXPECT_EQ(std::get<Failure>(outcome).sentence, "--picture: cannot write /no/such/r.svg");
}

// A route from a waypoint to itself is a line in the log, which counts the searches for it.
TEST_F(RouteCommandTest, routeIsSearchedOnceForTextJsonAndPicture) {
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

}  // namespace
}  // namespace tern::command
