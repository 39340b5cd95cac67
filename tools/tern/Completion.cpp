#include "tools/tern/Completion.hpp"

#include <algorithm>

#include "tools/tern/CommandTable.hpp"
#include "tools/tern/SharedOptions.hpp"

namespace tern::command {

namespace {

bool isSame(const Option& one, const Option& other) {
  return one.name == other.name && one.label == other.label && one.meaning == other.meaning &&
         one.choices == other.choices;
}

void add(std::vector<CompletedOption>& all, const Option& option, std::string_view command) {
  const auto known = std::ranges::find_if(
      all, [&](const CompletedOption& each) { return isSame(each.option, option); });
  if (known != all.end()) {
    known->commands.push_back(command);
  } else {
    all.push_back({option, {command}});
  }
}

constexpr Option helpOption{"--help", "", "print this help"};

}  // namespace

Offer offerFor(const Option& option) {
  if (option.isFlag()) return Offer::flag;
  if (!option.choices.empty()) return Offer::choices;
  if (option.label == "DIR") return Offer::folder;
  return option.label == "FILE" ? Offer::file : Offer::nothing;
}

std::vector<Option> earlyOptions() {
  std::vector<Option> options{{"--version", "", "print the version"}, jsonOption};
  options.insert(options.end(), sourceOptions.begin(), sourceOptions.end());
  options.insert(options.end(), venueOptions.begin(), venueOptions.end());
  options.insert(options.end(), hostOptions.begin(), hostOptions.end());
  return options;
}

std::vector<CompletedOption> completedOptions() {
  std::vector<CompletedOption> all;
  add(all, helpOption, "");
  for (const Option& option : earlyOptions()) add(all, option, "");
  for (const Command* command : allCommands()) {
    add(all, helpOption, command->name);
    for (const Option& option : optionsOf(*command)) add(all, option, command->name);
  }
  return all;
}

}  // namespace tern::command
