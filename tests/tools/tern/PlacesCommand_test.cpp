#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/AskedCommand.hpp"

namespace tern::command {
namespace {

class PlacesCommandTest : public testing::Test {
 protected:
  Answer ask(const std::vector<std::string>& words) {
    return std::get<Answer>(test::outcomeOf(words, venue_));
  }

  std::shared_ptr<TernActiveVenue> venue_ =
      test::loadDrawnVenue({.floors = {{.lines = {"A B"}, .name = "Ground"}},
                            .destinations = {{.id = 7, .at = "A", .name = "Café Coral"},
                                             {.id = 8, .at = "B", .name = "Coral"}},
                            .amenities = {{.id = 2, .at = "AB", .name = "Toilets"}}});
};

TEST_F(PlacesCommandTest, placesAreToldBestMatchFirst) {
  EXPECT_EQ(ask({"places", "CORÁL"}).text,
            "Coral (destination 8) on Ground (waypoint 2)\n"
            "Café Coral (destination 7) on Ground (waypoint 1)\n");
}

TEST_F(PlacesCommandTest, withoutATextAllAreTold) {
  EXPECT_EQ(ask({"places"}).text,
            "Café Coral (destination 7) on Ground (waypoint 1)\n"
            "Coral (destination 8) on Ground (waypoint 2)\n"
            "Toilets (amenity 2) on Ground (waypoints 1, 2)\n");
}

TEST_F(PlacesCommandTest, jsonIsTheAnswerOfTheSameRequest) {
  const TernAnswers answers(venue_);
  EXPECT_EQ(ask({"places", "coral", "--json"}).text,
            answers.answerText(R"({"op":"places","text":"coral"})") + "\n");
  EXPECT_EQ(ask({"places", "--json"}).text, answers.answerText(R"({"op":"places"})") + "\n");
}

TEST_F(PlacesCommandTest, withoutAMatchTheClosestIsNamed) {
  const Answer answer = ask({"places", "korral"});
  EXPECT_EQ(answer.status, ExitStatus::nothingFound);
  EXPECT_EQ(answer.text, "");
  EXPECT_EQ(answer.remark,
            "nothing in venue 1 is called \"korral\"; the closest is Coral (destination 8) on "
            "Ground (waypoint 2)");
  const Answer inJson = ask({"places", "korral", "--json"});
  EXPECT_EQ(inJson.status, ExitStatus::nothingFound);
  EXPECT_EQ(inJson.text, "{\"places\":[]}\n");
}

TEST_F(PlacesCommandTest, venueWithoutPlacesSaysSo) {
  venue_ = test::loadDrawnVenue({.floors = {{.lines = {"A"}}}});
  EXPECT_EQ(ask({"places"}).remark, "venue 1 has no destinations and no amenities");
  EXPECT_EQ(ask({"places", "coral"}).remark, "nothing in venue 1 is called \"coral\"");
}

}  // namespace
}  // namespace tern::command
