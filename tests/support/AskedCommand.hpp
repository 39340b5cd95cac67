// Asks a venue that is loaded already what the words of a command ask.
//
//   const command::Outcome outcome = outcomeOf({"route", "--from", "1", "--to", "4"}, venue);
//
// REQUIRES: the words are right; they need not say what to load. Threads: one.
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "tools/tern/CommandTable.hpp"
#include "tools/tern/PlaceNames.hpp"

namespace tern::test {

inline command::Outcome outcomeOf(std::vector<std::string> words,
                                  const std::shared_ptr<TernActiveVenue>& venue) {
  words.insert(words.begin() + 1, {"--data", "unread"});
  const auto call = std::get<command::Arguments>(command::parseArguments(words));
  return command::answerAbout(std::get<command::AboutVenue>(call.command->about), call, venue);
}

}  // namespace tern::test
