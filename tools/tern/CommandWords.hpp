// The commands that there are, and the order in which the words of a call stand.
//
// Threads: any. Fails: never.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tern::command {

struct CommandWord {
  std::string_view name;
  std::string_view summary;
};

inline constexpr std::array commandWords{
    CommandWord{"venues", "list the venues of the data"},
    CommandWord{"info", "count what a venue holds"},
    CommandWord{"route", "find a route between two waypoints"},
    CommandWord{"nearest", "find the nearest destination, amenity, lift or stairs"},
    CommandWord{"alternatives", "find a route and an alternative beside it"},
    CommandWord{"tour", "find the best order to visit destinations, and the way"},
    CommandWord{"closest", "find the waypoint nearest to a point"},
    CommandWord{"convert", "convert a point between projections"},
    CommandWord{"batch", "answer requests, one JSON object a line"},
    CommandWord{"serve", "serve a venue folder as a mapping service does"},
    CommandWord{"generate", "write a synthetic venue folder"},
};

const CommandWord* findCommand(std::string_view name);
// "venues, info, ..."
std::string namesOfCommands();

// Position of the word that should be a command: the first that neither is an option nor belongs to
// one.
std::optional<std::size_t> placeOfCommand(std::span<const std::string> words);

// Joins "--at" "-12.5,3" to "--at=-12.5,3", so that a negative number is not taken for an option.
std::vector<std::string> withNegativesJoined(std::span<const std::string> words);

}  // namespace tern::command
