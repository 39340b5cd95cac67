#include "tools/tern/Completion.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "tests/support/Paths.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/SharedOptions.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;

TEST(Completion, offersWhatTheValueIs) {
  EXPECT_EQ(offerFor(jsonOption), Offer::flag);
  EXPECT_EQ(offerFor(fromOption), Offer::nothing);
  EXPECT_EQ(offerFor(sourceOptions.front()), Offer::folder);
  EXPECT_EQ(offerFor(pictureOption), Offer::file);
  EXPECT_EQ(offerFor(languageOption), Offer::choices);
}

TEST(Completion, everyOptionOfEveryCommandIsThere) {
  const std::vector<CompletedOption> all = completedOptions();
  for (const Command* command : allCommands()) {
    for (const Option& option : optionsOf(*command)) {
      const auto isIt = [&](const CompletedOption& each) {
        return each.option.name == option.name && each.option.meaning == option.meaning &&
               std::ranges::count(each.commands, command->name) == 1;
      };
      EXPECT_EQ(std::ranges::count_if(all, isIt), 1) << command->name << " " << option.name;
    }
  }
}

// The script for bash relies on it.
TEST(Completion, offerFollowsFromTheNameUnlessThereAreChoices) {
  std::map<std::string_view, Offer> offers;
  for (const CompletedOption& each : completedOptions()) {
    if (offerFor(each.option) == Offer::choices) continue;
    const auto known = offers.emplace(each.option.name, offerFor(each.option)).first;
    EXPECT_EQ(known->second, offerFor(each.option)) << each.option.name;
  }
}

TEST(Completion, choicesAreAcceptedByTheirOptions) {
  for (const Command* command : allCommands()) {
    std::vector<Option> options = optionsOf(*command);
    options.push_back(command->operand);
    for (const Option& option : options) {
      std::istringstream choices{std::string(option.choices)};
      for (std::string choice; choices >> choice;) {
        EXPECT_TRUE(std::holds_alternative<Value>(option.read(choice))) << choice;
      }
    }
  }
}

TEST(Completion, languagesAreThoseOfTheSteps) {
  std::set<std::string> offered;
  std::istringstream choices{std::string(languageOption.choices)};
  for (std::string choice; choices >> choice;) offered.insert(choice);
  std::set<std::string> known{"en-US"};
  const std::filesystem::directory_iterator files(
      test::sourcePath("TernCoreKit/guidance/languages"));
  for (const auto& file : files) known.insert(file.path().stem());
  EXPECT_EQ(offered, known);
}

TEST(Completion, everyScriptKnowsEveryCommand) {
  for (const std::string& script : {bashCompletion(), zshCompletion(), fishCompletion()}) {
    for (const Command* command : allCommands()) EXPECT_THAT(script, HasSubstr(command->name));
    EXPECT_EQ(script.find('\t'), std::string::npos);
  }
}

}  // namespace
}  // namespace tern::command
