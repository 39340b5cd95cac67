// What a synthetic venue is made from. The same options give the same bytes on every machine.
//
// Every field has a default that makes a valid venue; `validate` says which option is out of range.
// Threads: a plain value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tern::generate {

// A closed range that an option's value must lie in.
struct OptionRange {
  std::int64_t least;
  std::int64_t most;
};

inline constexpr OptionRange buildingRange{1, 40};
inline constexpr OptionRange floorRange{1, 40};
inline constexpr OptionRange shopRange{1, 2'000'000};
inline constexpr OptionRange waypointRange{1, 5'000'000};
inline constexpr OptionRange spacingRange{1, 20};
inline constexpr OptionRange idRange{1, 1'000'000'000};
inline constexpr OptionRange venuesRange{1, 100};

struct GenerateOptions {
  // --seed: chooses the names, the widths of the shops and what they sell. Any value.
  std::uint64_t seed = 1;
  // --buildings: they stand beside each other and are joined by bridges and walks.
  std::int64_t buildings = 2;
  // --floors: of the first building; every second building is a floor lower, but never below one.
  // With three floors or more the lowest one is the level -1.
  std::int64_t floors = 4;
  // --shops: destinations of the whole venue, spread over all floors.
  std::int64_t shops = 80;
  // --waypoints: when set, `shops` is passed over and as many are made as bring the venue to about
  // this many waypoints: mostly within a hundredth, and within a tenth of them.
  std::optional<std::int64_t> waypoints;
  // --spacing: the widest gap between neighbouring waypoints of a corridor, in metres.
  std::int64_t spacing = 4;
  // --customer and --venue: the ids that the documents carry.
  std::int64_t customer = 1;
  std::int64_t venue = 1;
  // --venues: several stand beside each other from west to east, with ids from `venue` on; each has
  // an exit to the next one and one to the one before. Their waypoints lie at longitudes and
  // latitudes in place of pixels, since that is what a graph of joined venues takes.
  std::int64_t venues = 1;
};

// Names the first option that is out of range, e.g. "--floors: 0 is out of range, 1 to 40".
[[nodiscard]] std::optional<std::string> validate(const GenerateOptions& options);

}  // namespace tern::generate
