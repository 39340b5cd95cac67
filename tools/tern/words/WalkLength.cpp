#include "tools/tern/words/WalkLength.hpp"

#include <array>
#include <charconv>
#include <cmath>

#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::words {

namespace {

constexpr double longestLength = 1e9;

// Half a unit rounds up.
std::string whole(double value) { return std::to_string(std::llround(value)); }

std::string withTenths(double value) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::fixed, 1)
                       .ptr;
  return {digits.data(), end};
}

}  // namespace

WalkLength lengthOn(const TernMap* map, double mapUnits) {
  WalkLength length;
  if (!(mapUnits >= 0 && mapUnits <= longestLength)) return length;
  length.mapUnits = mapUnits;
  const double mmPerPixel = map != nullptr ? map->mmPerPixel.number() : 0;
  const double metres = mapUnits * mmPerPixel / 1000;
  if (mmPerPixel > 0 && metres <= longestLength) length.metres = metres;
  return length;
}

WalkLength operator+(const WalkLength& a, const WalkLength& b) {
  WalkLength sum{a.mapUnits + b.mapUnits, {}};
  if (a.metres && b.metres) sum.metres = *a.metres + *b.metres;
  return sum;
}

std::string WalkLength::text() const {
  if (!metres) return mapUnits < 0.5 ? "" : whole(mapUnits) + " map units";
  if (*metres < 0.5) return "";
  return *metres < 999.5 ? whole(*metres) + " m" : withTenths(*metres / 1000) + " km";
}

}  // namespace tern::words
