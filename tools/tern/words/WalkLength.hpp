// How long a walk is, for a person to read: the one form of lengths that all texts and pictures
// use.
//
// Threads: plain values. Fails: never; a length that makes no sense is nothing.
#pragma once

#include <optional>
#include <string>

#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::words {

// A length as a map's scale gives it; in map units where the scale is unknown.
struct WalkLength {
  double mapUnits = 0;
  std::optional<double> metres = std::nullopt;

  // "120 m", "1.2 km", "340 map units"; empty for what rounds to nothing.
  std::string text() const;
};

// On a map, which may be null.
WalkLength lengthOn(const TernMap* map, double mapUnits);

// Their sum; in metres only when both are.
WalkLength operator+(const WalkLength& a, const WalkLength& b);

}  // namespace tern::words
