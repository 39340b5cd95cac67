#include "tools/tern/HelpText.hpp"

#include "tools/tern/CommandTable.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

constexpr std::string_view generalText = R"(
Each command says more with --help, e.g. tern route --help.

Examples:
  tern generate --out mall
  tern info --data mall
  tern route --data mall --from 22001 --to 14016 --picture route.html
  echo '{"op":"route","from":22001,"to":14016}' | tern batch --data mall
  tern serve --data mall --port 8080
  TERN_CLIENT_SECRET=local tern info --host http://127.0.0.1:8080 \
      --customer 1 --client-id local

Wherever --data stands, --host with --customer and --client-id may stand too:
the venues then come from a mapping service. Its answers are kept below the
user's data folder, or in --cache DIR, and are what there is when the service
cannot be reached. --no-reload asks for nothing that is kept.

A venue folder holds the documents of a mapping service: full.json,
venue/1/full.json, venue/1/building/1/full.json and so on. With --json every
command prints one JSON object.

Exit status: 0 answered; 1 answered, and there is nothing to be found; 2 the
words of the call are wrong; 3 the data could not be loaded; 4 the answer could
not be written.
)";

// "  --from W    the waypoint ..."
std::string entry(std::string_view name, std::string_view meaning) {
  return "  " + padded(name, 22) + " " + std::string(meaning) + "\n";
}

std::string entry(const Option& option) {
  std::string name(option.name);
  if (!option.isFlag()) name.append(" ").append(option.label);
  std::string meaning(option.meaning);
  const std::string_view fallback = option.need.fallback;
  if (!fallback.empty()) meaning.append(" (default ").append(fallback).append(")");
  return entry(name, meaning);
}

}  // namespace

std::string generalHelp() {
  std::string help = "Indoor maps and wayfinding\nUsage: tern COMMAND [OPTIONS]\n\nCommands:\n";
  for (const Command* command : allCommands()) help += entry(command->name, command->summary);
  return help.append(generalText);
}

std::string helpOf(const Command& command) {
  std::string usage = "Usage: tern " + std::string(command.name);
  const Option& operand = command.operand;
  std::string options = entry("-h, --help", "print this help");
  if (!operand.name.empty()) {
    usage.append(" [").append(operand.name).append("]");
    options = entry(operand.name, operand.meaning) + options;
  }
  for (const Option& option : optionsOf(command)) {
    if (option.name == hostOptions.front().name && loadsData(command))
      options += "\nBeside --host:\n";
    options += entry(option);
  }
  for (const Option& option : command.options) {
    if (option.need.isRequired)
      usage.append(" ").append(option.name).append(" ").append(option.label);
  }
  return std::string(command.summary) + "\n" + usage + " [OPTIONS]\n\nOptions:\n" + options + "\n" +
         std::string(command.help);
}

}  // namespace tern::command
