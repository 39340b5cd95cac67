// Scripts that have a shell complete the words of the command: commands, their options and values
// that are known. They are made of the table of commands.
//
// Threads: any. Fails: never.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/tern/Option.hpp"

namespace tern::command {

std::string bashCompletion();
std::string zshCompletion();
std::string fishCompletion();

// What a shell offers for the value of an option.
enum class Offer { flag, nothing, file, folder, choices };
Offer offerFor(const Option& option);

// An option that stands behind these commands, all with the same meaning. A command without a name
// stands for the words before one.
struct CompletedOption {
  Option option;
  std::vector<std::string_view> commands;
};
std::vector<CompletedOption> completedOptions();

// Those that may stand before a command.
std::vector<Option> earlyOptions();

}  // namespace tern::command
