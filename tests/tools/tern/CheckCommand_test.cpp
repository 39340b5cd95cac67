#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/MadeRecords.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tools/tern/CommandTable.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;

Outcome outcomeOf(const std::vector<std::string>& words) {
  const auto call = std::get<Arguments>(parseArguments(words));
  Output answers(-1);
  Console console{-1, answers};
  return std::get<AboutNothing>(call.command->about)(call, console);
}

TEST(CheckCommand, soundVenueIsAnswered) {
  const auto answer = std::get<Answer>(outcomeOf({"check", "--data", test::samplePath()}));
  EXPECT_EQ(answer.status, ExitStatus::answered);
  EXPECT_THAT(answer.text, HasSubstr("Nothing found.\n"));
}

TEST(CheckCommand, findingsAreToldAndEndInOne) {
  const test::TemporaryFolder folder;
  test::writeTwoFloors(folder);
  const auto text = std::get<Answer>(outcomeOf({"check", "--data", folder.path().string()}));
  EXPECT_EQ(text.status, ExitStatus::nothingFound);
  EXPECT_THAT(text.text,
              HasSubstr("\n1 island: join them to the rest with a path, or take them out\n"
                        "  waypoint 5 on Ground Floor is joined to nothing else"));
  const auto json = std::get<Answer>(
      outcomeOf({"check", "--data", folder.path().string(), "--venue", "1", "--json"}));
  EXPECT_EQ(json.status, ExitStatus::nothingFound);
  EXPECT_EQ(test::parsed(json.text)["findings"].items()[0]["kind"], Value("island"));
}

TEST(CheckCommand, pictureIsDrawnInEitherKindOfFile) {
  const test::TemporaryFolder folder;
  for (const char* name : {"a.svg", "a.html"}) {
    const std::string file = folder.at(name);
    outcomeOf({"check", "--data", test::samplePath(), "--picture", file});
    EXPECT_THAT(folder.read(name), HasSubstr(">Check of Linden Plaza<"));
  }
  const auto refused = parseArguments({"check", "--data", "x", "--picture", "a.geojson"});
  ASSERT_TRUE(std::holds_alternative<Failure>(refused));
  EXPECT_THAT(std::get<Failure>(refused).error.message, HasSubstr("must end in .svg or .html"));
}

TEST(CheckCommand, dataThatIsNotThereIsNotLoaded) {
  const test::TemporaryFolder folder;
  const auto failure = std::get<Failure>(outcomeOf({"check", "--data", folder.at("none")}));
  EXPECT_EQ(failure.status, ExitStatus::notLoaded);
}

}  // namespace
}  // namespace tern::command
