#include "tools/tern/VenueFolder.hpp"

namespace tern::command {

Loaded<TernVenueCollection> readVenues(const std::filesystem::path& folder) {
  return orFailure(tern::readVenues(folderDocuments(folder.string())));
}

Loaded<TernActiveVenue> loadVenue(const std::filesystem::path& folder,
                                  std::optional<std::int64_t> venueId,
                                  std::optional<std::int64_t> buildingId,
                                  VenueDocuments* documents) {
  return orFailure(
      tern::loadVenue(folderDocuments(folder.string()), venueId, buildingId, documents));
}

}  // namespace tern::command
