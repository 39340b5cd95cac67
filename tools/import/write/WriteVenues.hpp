// Makes a venue folder of drafts.
//
//   std::vector<Draft> drafts = ...;
//   const WrittenVenues written = writeVenues(drafts, {}, "station");
//   if (written.error) ...
//
// Threads: free functions; the folder must be nobody else's meanwhile.
// Fails: by the result, with one line; nothing is written or replaced then.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/write/VenuePlan.hpp"

namespace tern::imports {

// What came of a draft.
struct WrittenVenue {
  std::int64_t id = 0;
  std::string name;
  std::size_t floors = 0;
  std::size_t waypoints = 0;
  std::size_t paths = 0;
  std::size_t destinations = 0;
  std::size_t amenities = 0;
  std::array<int, linkKindCount> kinds{};
  // Metres.
  double residual = 0;
};

struct [[nodiscard]] WrittenVenues {
  std::vector<WrittenVenue> venues;
  // Of all drafts.
  std::vector<Oddity> told;
  std::optional<std::string> error;
};

// REQUIRES: at least one draft, each with a floor and a building; a customer where there are
// several.
WrittenVenues writeVenues(std::span<const Draft> drafts, const VenueWishes& wishes,
                          const std::filesystem::path& folder);

}  // namespace tern::imports
