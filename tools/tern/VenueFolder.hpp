// Reads a venue folder, which holds the documents that a mapping service would answer with:
//
//   full.json                                    the customer and the list of venues
//   venue/<id>/full.json                         a venue
//   venue/<id>/building/<id>/full.json           one of its buildings, with floors and maps
//
// Only what is asked for is read. What a broken document has that the library cannot use is logged
// and left out, as it is when a service sends it.
//
// Ownership: hands out what it reads and keeps nothing. Threads: any.
// Fails: by value, with one line that names the file and what is wrong with it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/VenueChoice.hpp"

namespace tern::command {

// A document of more bytes is refused.
inline constexpr std::uintmax_t maximumDocumentBytes = std::uintmax_t{1} << 30U;

// The venues of the customer.
Loaded<TernVenueCollection> readVenues(const std::filesystem::path& folder);

// The documents of a venue and of its buildings, as they lie in the folder.
struct VenueDocuments {
  Value venue;
  std::vector<Value> buildings;
};

// A venue with its graph; see VenueSource.hpp. `documents`, where it is not null, gets what the
// venue was made of.
Loaded<TernActiveVenue> loadVenue(const std::filesystem::path& folder,
                                  std::optional<std::int64_t> venueId,
                                  std::optional<std::int64_t> buildingId,
                                  VenueDocuments* documents = nullptr);

}  // namespace tern::command
