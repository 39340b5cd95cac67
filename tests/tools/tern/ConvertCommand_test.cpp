#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "tests/support/AskedCommand.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern::command {
namespace {

class ConvertCommandTest : public testing::Test {
 protected:
  ConvertCommandTest() {
    setLogSink([](std::string_view) {});
    addBuilding(*venue_, 1, test::twoFloorsBuildingDocument());
    attachWaypoints(*venue_);
    venue_->loadGridData();
    venue_->loadKDTree();
  }
  ~ConvertCommandTest() override { setLogSink({}); }

  Answer ask(const std::vector<std::string>& words) {
    return std::get<Answer>(test::outcomeOf(words, venue_));
  }

  std::shared_ptr<TernActiveVenue> venue_ =
      TernActiveVenue::initWithDictionary(test::twoFloorsVenueDocument());
};

TEST_F(ConvertCommandTest, jsonIsTheAnswerOfTheSameRequest) {
  EXPECT_EQ(
      ask({"convert", "--point", "0,10", "--from", "EPSG:4326", "--to", "tern:local", "--json"})
          .text,
      TernAnswers(venue_).answerText(
          R"({"op":"convert","point":[0,10],"from":"EPSG:4326","to":"tern:local"})") +
          "\n");
}

TEST_F(ConvertCommandTest, convertedPointCanBeAskedOnWith) {
  EXPECT_EQ(ask({"convert", "--point", "0,10", "--from", "EPSG:4326", "--to", "tern:local"}).text,
            "0,0\n");
  EXPECT_EQ(ask({"convert", "--point", "180,0", "--from", "EPSG:4326", "--to", "EPSG:3857"}).text,
            "20037508.342789244,-7.081154551613622e-10\n");
}

TEST_F(ConvertCommandTest, pointThatCannotBeConvertedIsNotAnswered) {
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
