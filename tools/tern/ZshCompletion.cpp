// The script for zsh, for a folder of $fpath or to be sourced.
#include <string>

#include "tools/tern/CommandTable.hpp"
#include "tools/tern/Completion.hpp"

namespace tern::command {

namespace {

// The text within single quotes, with a backslash before each of these letters.
std::string quoted(std::string_view text, std::string_view special) {
  std::string escaped;
  for (const char letter : text) {
    if (special.find(letter) != special.npos) escaped += '\\';
    escaped += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
  }
  return escaped;
}

// ":DIR:_files -/", behind the name of an option that has a value.
std::string zshValueOf(const Option& option) {
  const std::string label = ":" + std::string(option.label) + ":";
  switch (offerFor(option)) {
    case Offer::flag:
      return {};
    case Offer::file:
      return label + "_files";
    case Offer::folder:
      return label + "_files -/";
    case Offer::choices:
      return label + "(" + quoted(option.choices, ":") + ")";
    case Offer::nothing:
      break;
  }
  return label + " ";
}

// "'--from=[where to start]:W: '"
std::string argumentOf(const Option& option) {
  return "'" + std::string(option.name) + (option.isFlag() ? "[" : "=[") +
         quoted(option.meaning, "[]\\") + "]" + zshValueOf(option) + "'";
}

template <class Options>
std::string argumentsOf(const Options& options, const std::string& indent) {
  std::string arguments = "'(- *)'{-h,--help}'[print this help]'";
  for (const Option& option : options) arguments += " \\\n" + indent + argumentOf(option);
  return arguments;
}

std::string caseOf(const Command& command) {
  const Option& operand = command.operand;
  std::string text = "    " + std::string(command.name) + ")\n      _arguments -S \\\n        ";
  text += argumentsOf(optionsOf(command), "        ");
  if (!operand.name.empty()) text += " \\\n        '1" + zshValueOf(operand) + "'";
  return text + " ;;\n";
}

}  // namespace

std::string zshCompletion() {
  std::string script =
      "#compdef tern\n# Words of tern for zsh; written by \"tern completion zsh\".\n\n"
      "_tern_commands() {\n  local -a commands=(\n";
  for (const Command* command : allCommands()) {
    script += "    '" + std::string(command->name) + ":" + quoted(command->summary, ":\\") + "'\n";
  }
  script +=
      "  )\n  _describe command commands\n}\n\n_tern() {\n"
      "  local curcontext=$curcontext state line\n  typeset -A opt_args\n"
      "  _arguments -C -A \"-*\" \\\n    " +
      argumentsOf(earlyOptions(), "    ") +
      " \\\n    '1: :_tern_commands' \\\n    '*:: :->words' && return\n"
      "  [[ $state == words ]] || return\n  case $line[1] in\n";
  for (const Command* command : allCommands()) script += caseOf(*command);
  return script +
         "  esac\n}\n\n"
         "# Sourced, it is told to zsh; from a folder of $fpath, it is called.\n"
         "if [[ $funcstack[1] == _tern ]]; then\n  _tern \"$@\"\nelse\n  compdef _tern tern\nfi\n";
}

}  // namespace tern::command
