// Reads a venue folder, which holds the documents that a mapping service would answer with; see
// TernCoreKit/loading/VenueLoading.hpp.
//
// Ownership: hands out what it reads and keeps nothing. Threads: any.
// Fails: by value, with one line that names the file and what is wrong with it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "TernCoreKit/loading/VenueLoading.hpp"
#include "tools/tern/VenueChoice.hpp"
#include "tools/tern/VenueFiles.hpp"

namespace tern::command {

// The venues of the customer.
Loaded<TernVenueCollection> readVenues(const std::filesystem::path& folder);

// A venue with its graph; see VenueSource.hpp. `documents`, where it is not null, gets what the
// venue was made of.
Loaded<TernActiveVenue> loadVenue(const std::filesystem::path& folder,
                                  std::optional<std::int64_t> venueId,
                                  std::optional<std::int64_t> buildingId,
                                  VenueDocuments* documents = nullptr);

// The documents that lie in the folder. Nothing outside it is ever read, also not over a symbolic
// link in it.
DocumentSource documentsWithin(const std::filesystem::path& folder);

// Those venues, loaded once, with the documents that lie within the folder, which are read anew
// each time; see VenueSource.hpp.
Loaded<VenueFiles> loadFiles(const std::filesystem::path& folder,
                             std::vector<std::int64_t> venueIds);

}  // namespace tern::command
