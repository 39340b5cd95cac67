#include "tools/tern/RequestCommands.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace tern::command {

namespace {

struct NamedCommand {
  std::string_view name;
  RequestCommand* answer;
};

constexpr std::array commands{
    NamedCommand{"route", answerRoute},     NamedCommand{"alternatives", answerAlternatives},
    NamedCommand{"tour", answerTour},       NamedCommand{"nearest", answerNearest},
    NamedCommand{"closest", answerClosest}, NamedCommand{"convert", answerConvert},
};

}  // namespace

Outcome answerCall(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const auto* found = std::ranges::find(commands, call.command, &NamedCommand::name);
  if (found == commands.end())
    return wrongWords("\"" + call.command + "\" asks nothing of a venue");
  return found->answer(call, venue);
}

}  // namespace tern::command
