// The script for fish.
#include <string>

#include "tools/tern/CommandTable.hpp"
#include "tools/tern/Completion.hpp"

namespace tern::command {

namespace {

std::string quoted(std::string_view text) {
  std::string escaped = "'";
  for (const char letter : text) {
    if (letter == '\'' || letter == '\\') escaped += '\\';
    escaped += letter;
  }
  return escaped + "'";
}

std::string fishValueOf(const Option& option) {
  switch (offerFor(option)) {
    case Offer::flag:
      return {};
    case Offer::file:
      return " -r -F";
    case Offer::folder:
      return " -x -a '(__fish_complete_directories)'";
    case Offer::choices:
      return " -x -a " + quoted(option.choices);
    case Offer::nothing:
      break;
  }
  return " -x";
}

// Where an option stands: "-n '__tern_is route tour'", nothing where it may stand anywhere.
std::string placeOf(const std::vector<std::string_view>& commands) {
  if (commands.size() == allCommands().size() + 1) return {};
  std::string names;
  for (const std::string_view command : commands) {
    names.append(" ").append(command.empty() ? "\"\"" : command);
  }
  return " -n '__tern_is" + names + "'";
}

std::string lineOf(const CompletedOption& each) {
  const bool isHelp = each.option.name == "--help";
  return "complete -c tern" + placeOf(each.commands) + (isHelp ? " -s h" : "") + " -l " +
         std::string(each.option.name.substr(2)) + fishValueOf(each.option) + " -d " +
         quoted(each.option.meaning) + "\n";
}

constexpr std::string_view fishBeginning =
    R"(# Words of tern for fish; written by "tern completion fish".

# Whether the command among the words is one of these; "" when there is none yet.
function __tern_is
  set -l words (commandline -opc)
  set -l command ""
  set -e words[1]
  while set -q words[1]
    switch $words[1]
)";

constexpr std::string_view middle = R"(
        set -e words[1]
      case '-*'
      case '*'
        set command $words[1]
        break
    end
    set -e words[1]
  end
  contains -- "$command" $argv
end

complete -c tern -f
)";

}  // namespace

std::string fishCompletion() {
  std::string script = std::string(fishBeginning) + "      case";
  for (const Option& option : earlyOptions()) {
    if (!option.isFlag()) script.append(" ").append(option.name);
  }
  script += middle;
  for (const Command* command : allCommands()) {
    const std::string name(command->name);
    script += "complete -c tern -n '__tern_is \"\"' -a " + name + " -d " +
              quoted(command->summary) + "\n";
    const std::string_view choices = command->operand.choices;
    if (choices.empty()) continue;
    script += "complete -c tern -n '__tern_is " + name + "' -a " + quoted(choices) + "\n";
  }
  for (const CompletedOption& each : completedOptions()) script += lineOf(each);
  return script;
}

}  // namespace tern::command
