#include "tools/tern/CommandWords.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::command {
namespace {

using testing::ElementsAre;

std::optional<std::size_t> placeIn(std::vector<std::string> words) { return placeOfCommand(words); }

TEST(CommandWords, everyCommandIsFoundByItsName) {
  for (const CommandWord& word : commandWords) EXPECT_EQ(findCommand(word.name), &word);
  EXPECT_EQ(findCommand("fly"), nullptr);
  EXPECT_EQ(findCommand(""), nullptr);
}

TEST(CommandWords, namesStandInOneList) {
  EXPECT_EQ(
      namesOfCommands(),
      "venues, info, route, nearest, alternatives, tour, closest, convert, batch, serve, generate");
}

TEST(CommandWords, commandIsTheFirstWordThatIsNoOption) {
  EXPECT_EQ(placeIn({"route", "--from", "1"}), 0);
  EXPECT_EQ(placeIn({"--json", "route"}), 1);
  EXPECT_EQ(placeIn({"--data=mall", "fly"}), 1);
  EXPECT_EQ(placeIn({"--data", "info", "--venue", "1", "route"}), 4);
  EXPECT_EQ(placeIn({"--data", "mall"}), std::nullopt);
  EXPECT_EQ(placeIn({"--data"}), std::nullopt);
  EXPECT_EQ(placeIn({}), std::nullopt);
}

TEST(CommandWords, negativeNumbersAreJoinedToTheirOption) {
  const std::vector<std::string> words = {"--at",   "-12.5,3", "--point=1,2", "-3",
                                          "--from", "-.5",     "-h",          "-1"};
  EXPECT_THAT(withNegativesJoined(words),
              ElementsAre("--at=-12.5,3", "--point=1,2", "-3", "--from=-.5", "-h", "-1"));
}

}  // namespace
}  // namespace tern::command
