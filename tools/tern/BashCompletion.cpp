// The script for bash. It needs nothing of bash-completion, which not everybody has.
#include <algorithm>
#include <string>
#include <vector>

#include "tools/tern/CommandTable.hpp"
#include "tools/tern/Completion.hpp"

namespace tern::command {

namespace {

// "*' --data' | *' --out'": all options with that offer, whatever the command.
std::string placesOf(Offer offer) {
  std::vector<std::string> places;
  for (const CompletedOption& each : completedOptions()) {
    const std::string place = "*' " + std::string(each.option.name) + "'";
    const bool isNew = std::ranges::find(places, place) == places.end();
    if (offerFor(each.option) == offer && isNew) places.push_back(place);
  }
  std::string text;
  for (const std::string& place : places) text += (text.empty() ? "" : " | ") + place;
  return text;
}

// A line for each option with choices, and for each command with some.
std::string choiceCases() {
  std::string cases;
  for (const CompletedOption& each : completedOptions()) {
    if (offerFor(each.option) != Offer::choices) continue;
    for (const std::string_view command : each.commands) {
      cases.append("    '").append(command).append(" ").append(each.option.name);
      cases.append("') words='").append(each.option.choices).append("' ;;\n");
    }
  }
  return cases;
}

std::string optionCases() {
  std::string cases;
  for (const Command* command : allCommands()) {
    cases.append("        ").append(command->name).append(") words='");
    for (const Option& option : optionsOf(*command)) cases.append(option.name).append(" ");
    cases += "--help'";
    const std::string_view choices = command->operand.choices;
    if (!choices.empty()) {
      cases.append("\n          [[ $word == -* ]] || words='").append(choices).append("'");
    }
    cases += " ;;\n";
  }
  return cases;
}

// The options before a command whose values are words of their own.
std::string earlyNames(bool areValued) {
  std::string names;
  for (const Option& option : earlyOptions()) {
    if (areValued && option.isFlag()) continue;
    names.append(names.empty() ? "" : areValued ? " | " : " ").append(option.name);
  }
  return names;
}

constexpr std::string_view bashBeginning =
    R"(# Words of tern for bash; written by "tern completion bash".

_tern() {
  local word=${COMP_WORDS[COMP_CWORD]} at=$COMP_CWORD command= before= words= i

  # bash takes words apart at "=" and ":".
  while ((at > 1)) && [[ ${COMP_WORDS[at]} == : || ${COMP_WORDS[at - 1]} == : ]]; do
    word=${COMP_WORDS[at - 1]}$word
    ((--at))
  done
  before=${COMP_WORDS[at - 1]}
  if [[ $word == = ]]; then
    word=
  elif [[ $before == = ]]; then
    before=${COMP_WORDS[at - 2]}
  fi

  for ((i = 1; i < at; ++i)); do
    case ${COMP_WORDS[i]} in
      = | :) ((++i)) ;;
)";

constexpr std::string_view end = R"(  esac

  COMPREPLY=($(compgen -W "$words" -- "$word"))
  # Of a word with ":" in it, bash puts in what stands behind.
  if [[ $word == *:* && $COMP_WORDBREAKS == *:* ]]; then
    COMPREPLY=("${COMPREPLY[@]#"${word%"${word##*:}"}"}")
  fi
}

complete -F _tern tern
)";

}  // namespace

std::string bashCompletion() {
  std::string script(bashBeginning);
  script += "      " + earlyNames(true) + ")\n";
  script += "        [[ ${COMP_WORDS[i + 1]} == = ]] || ((++i)) ;;\n";
  script += "      -*) ;;\n      *)\n        command=${COMP_WORDS[i]}\n        break ;;\n";
  script += "    esac\n  done\n\n  case \"$command $before\" in\n";
  script += choiceCases();
  script += "    " + placesOf(Offer::folder) + ")\n      compopt -o dirnames\n      return ;;\n";
  script += "    " + placesOf(Offer::file) + ")\n      compopt -o default\n      return ;;\n";
  script += "    " + placesOf(Offer::nothing) + ")\n      return ;;\n";
  script += "    *)\n      case $command in\n        '') words='" +
            namesOfCommands([](const Command&) { return true; }, " ") + "'\n";
  script += "          [[ $word != -* ]] || words='" + earlyNames(false) + " --help' ;;\n";
  script += optionCases() + "      esac ;;\n";
  return script.append(end);
}

}  // namespace tern::command
