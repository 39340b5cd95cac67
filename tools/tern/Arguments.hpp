// What a call of the command asks for, from its words.
//
// Threads: plain values. Fails: by value.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/Failure.hpp"
#include "tools/tern/HostOptions.hpp"
#include "tools/tern/Look.hpp"

namespace tern::command {

struct Command;

struct Arguments {
  // Its entry in the table of commands.
  const Command* command = nullptr;
  bool json = false;
  // The venue folder; empty when a service is asked instead.
  std::string data = {};
  HostOptions service = {};
  // What of it to load: without ids the only venue that there is, of several ids each its venue,
  // joined; all different.
  std::vector<std::int64_t> venues = {};
  std::optional<std::int64_t> building = {};
  // The command's own options under their names, as a line of a batch would ask: "op" is the
  // command's name.
  Value request = {};
  // File of the picture; empty without one.
  std::string picture = {};
};

// What is printed instead of an answer: help or the version.
struct Information {
  std::string text;
};

using ParsedCall = std::variant<Arguments, Information, Failure>;

// The words are those behind the program's name. Options that stand before the command count as if
// they stood behind it. The look is that of help.
ParsedCall parseArguments(std::vector<std::string> words, const Look& look = {});

// Whether the words ask for JSON, even if nothing else in them is right.
bool asksForJson(std::span<const std::string> words);

}  // namespace tern::command
