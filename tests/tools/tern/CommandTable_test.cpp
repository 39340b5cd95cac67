#include "tools/tern/CommandTable.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace tern::command {
namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;

std::vector<std::string> optionNamesOf(const Command& command) {
  std::vector<std::string> names;
  for (const Option& option : optionsOf(command)) names.emplace_back(option.name);
  return names;
}

TEST(CommandTable, everyCommandIsFoundByItsName) {
  for (const Command* command : allCommands()) EXPECT_EQ(findCommand(command->name), command);
  EXPECT_EQ(findCommand("fly"), nullptr);
  EXPECT_EQ(findCommand(""), nullptr);
}

TEST(CommandTable, namesStandInOneList) {
  EXPECT_EQ(
      namesOfCommands([](const Command&) { return true; }, ", "),
      "venues, info, floors, places, route, nearest, alternatives, tour, matrix, reach, closest, "
      "convert, batch, explore, "
      "serve, generate, check, import, completion, man");
  EXPECT_EQ(namesOfCommands(joinsVenues, " and "), "route and batch and explore and serve");
  EXPECT_EQ(namesOfCommands([](const Command&) { return false; }, ", "), "");
}

TEST(CommandTable, optionsThatChooseTheDataFollowFromWhatACommandIsAbout) {
  EXPECT_THAT(optionNamesOf(infoCommand),
              IsSupersetOf({"--data", "--host", "--customer", "--venue", "--building", "--json"}));
  EXPECT_THAT(optionNamesOf(venuesCommand), IsSupersetOf({"--data", "--host", "--json"}));
  EXPECT_THAT(optionNamesOf(venuesCommand), Not(Contains("--venue")));
  EXPECT_THAT(optionNamesOf(generateCommand), Not(Contains("--data")));
  EXPECT_THAT(optionNamesOf(serveCommand), Not(Contains("--host")));
}

TEST(CommandTable, optionsOfACommandHaveNamesOfTheirOwn) {
  for (const Command* command : allCommands()) {
    const std::vector<std::string> names = optionNamesOf(*command);
    EXPECT_EQ(std::set(names.begin(), names.end()).size(), names.size()) << command->name;
    for (const Option& option : optionsOf(*command)) {
      EXPECT_TRUE(option.name.starts_with("--")) << option.name;
      EXPECT_NE(option.meaning, "") << option.name;
      EXPECT_EQ(option.read == nullptr, option.isFlag()) << option.name;
    }
  }
}

}  // namespace
}  // namespace tern::command
