// The JSON documents of a synthetic venue, each as the mapping service would answer it.
//
// Records carry only keys that are fields of theirs, since any other key would stop the record.
// What the records have no field for (names in other languages, categories) stands under
// "extensors":
//
//   "extensors": {"category": "Health", "names": {"de-DE": "Wren Apotheke", ...}}
//
// Threads: free functions over a model that nobody changes meanwhile.
#pragma once

#include <span>
#include <string>

#include "tools/documents/MapTemplate.hpp"
#include "tools/generate/VenueModel.hpp"

namespace tern::generate {

// REQUIRES: a venue.
std::string customerDocument(std::span<const VenueModel> venues);
std::string localesDocument();
std::string venueDocument(const VenueModel& venue);
std::string buildingDocument(const VenueModel& venue, int building);
std::string destinationsDocument(const VenueModel& venue);
// That which the venue document names.
documents::MapTemplate mapTemplateOf(const VenueModel& venue);

}  // namespace tern::generate
