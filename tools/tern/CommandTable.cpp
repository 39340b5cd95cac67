#include "tools/tern/CommandTable.hpp"

#include <algorithm>
#include <array>

#include "tools/tern/SharedOptions.hpp"

namespace tern::command {

namespace {

constexpr std::array commands{
    &venuesCommand,     &infoCommand,         &floorsCommand, &placesCommand,  &routeCommand,
    &nearestCommand,    &alternativesCommand, &tourCommand,   &matrixCommand,  &reachCommand,
    &closestCommand,    &convertCommand,      &batchCommand,  &exploreCommand, &serveCommand,
    &generateCommand,   &checkCommand,
#ifdef TERN_WITH_IMPORT
    &importCommand,
#endif
    &completionCommand, &manCommand,
};

}  // namespace

std::span<const Command* const> allCommands() { return commands; }

const Command* findCommand(std::string_view name) {
  const auto found = std::ranges::find(commands, name, &Command::name);
  return found != commands.end() ? *found : nullptr;
}

bool loadsData(const Command& command) {
  return !std::holds_alternative<AboutNothing>(command.about);
}

bool loadsVenue(const Command& command) {
  return loadsData(command) && !std::holds_alternative<AboutCustomer>(command.about) &&
         !std::holds_alternative<AboutFiles>(command.about);
}

bool joinsVenues(const Command& command) {
  const auto* about = std::get_if<AboutVenue>(&command.about);
  return about != nullptr
             ? about->joined != nullptr
             : std::holds_alternative<AboutRequests>(command.about) ||
                   std::holds_alternative<AboutFiles>(command.about) || &command == &serveCommand;
}

std::string namesOfCommands(bool (*isSo)(const Command&), std::string_view between) {
  std::string names;
  for (const Command* command : commands) {
    if (isSo(*command)) names.append(names.empty() ? "" : between).append(command->name);
  }
  return names;
}

std::vector<Option> optionsOf(const Command& command) {
  std::vector<Option> options = command.options;
  const auto add = [&](const auto& more) {
    options.insert(options.end(), more.begin(), more.end());
  };
  if (loadsData(command)) add(sourceOptions);
  if (loadsVenue(command)) add(venueOptions);
  options.push_back(jsonOption);
  if (loadsData(command)) add(hostOptions);
  return options;
}

}  // namespace tern::command
