// What a step is called in a language.
//
// Threads: as readers of the venues. Fails: never; what has no name is told without one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "TernCoreKit/guidance/TernStep.hpp"
#include "TernCoreKit/guidance/detail/Landmarks.hpp"
#include "TernCoreKit/guidance/detail/PhraseBook.hpp"
#include "TernCoreKit/guidance/detail/WalkedRoute.hpp"

namespace tern::inline v5::detail {

// "left" and so on, as the languages' files call it.
std::string_view directionName(TernDirection direction);

// What is at a waypoint: a destination, else an amenity.
struct NamedPlace {
  std::optional<std::int64_t> destination;
  std::string name;
};
NamedPlace placeAt(const MapPlace& map, std::int64_t waypointId);

// Of a waypoint without a name: "a place near ...", else the floor; empty when that has no name
// either.
std::string placeText(const PhraseBook& book, const MapPlace& map, std::int64_t waypointId);

// A step and what its text speaks of.
struct StepWords {
  const TernStep& step;
  const MapPlace& from;
  // Where a mover or a crossing leads; else the same.
  const MapPlace& to;
  std::optional<SeenLandmark> seen;
  // Of the beginning and the end.
  std::string place;
};

std::string textOf(const PhraseBook& book, const StepWords& words);

}  // namespace tern::detail
