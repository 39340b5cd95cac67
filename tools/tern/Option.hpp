// One option of a command, as the table of commands describes it, and the kinds of value that an
// option may have.
//
// Ownership: a constant; its texts are constants too. Threads: any. Fails: a reader by value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::command {

// What a text stands for, or what is wrong with it: "\"x\" must be a whole number, such as 12".
using Reading = std::variant<Value, std::string>;

Reading readText(const std::string& text);
Reading readWhole(const std::string& text);
Reading readNumber(const std::string& text);
// "7,9,30" as a list
Reading readWholes(const std::string& text);
// The same, each a different id.
Reading readVenueIds(const std::string& text);
// "120.5,88" as a list of two numbers
Reading readPoint(const std::string& text);
// An id, or a name; ids and names, with a comma between each two.
Reading readPlace(const std::string& text);
Reading readPlaces(const std::string& text);
// Without a "/" at its end.
Reading readUrl(const std::string& text);
Reading readPictureFile(const std::string& text);

Reading readWholeWithin(std::int64_t least, std::int64_t most, const std::string& text);
template <std::int64_t least, std::int64_t most>
Reading readWholeBetween(const std::string& text) {
  return readWholeWithin(least, most, text);
}

// One of these words, which have a space between each two.
Reading readWordOf(std::string_view words, const std::string& text);
template <const std::string_view& words>
Reading readOneOf(const std::string& text) {
  return readWordOf(words, text);
}

// Whether an option may be left out, and what counts then: the text, which the help names, or
// nothing.
struct Need {
  bool isRequired = false;
  std::string_view fallback = {};
};

inline constexpr Need required{.isRequired = true};
inline constexpr Need optional{};
constexpr Need orElse(std::string_view fallback) { return {.fallback = fallback}; }

// What a name stands for in the place of an id: no name may stand; one waypoint, all waypoints, or
// the record itself.
enum class Naming { none, start, goal, destination, amenity };

struct Option {
  // With its dashes: "--from". That of an operand has none.
  std::string_view name;
  // Stands for the value in the help: "W". That of a file is "FILE" and that of a folder "DIR". An
  // option without one is a flag and has no value.
  std::string_view label;
  std::string_view meaning;
  Reading (*read)(const std::string& text) = nullptr;
  Need need = optional;
  // The value's name in the request, when it is not the option's; "options.match" lies within
  // "options".
  std::string_view key = {};
  // REQUIRES: the value is read by `readPlace` or `readPlaces`, but for `none`.
  Naming naming = Naming::none;
  // Values that a shell may offer, with a space between each two; empty where they are not known.
  std::string_view choices = {};

  std::string_view requestKey() const { return key.empty() ? name.substr(2) : key; }
  bool isFlag() const { return label.empty(); }
};

// The text in quotes, cut when it is long.
std::string inQuotes(std::string_view text);

}  // namespace tern::command
