// Makes a synthetic venue: a shopping centre that looks like one, as the documents of a venue
// folder.
//
//   full.json                                  the customer
//   locale/full.json                           the locales
//   venue/<id>/full.json                       the venue: what it offers and where
//   venue/<id>/building/<id>/full.json         a building: floors, drawings, waypoints, paths
//   venue/<id>/destinations.json               the destinations once more, as the shared answer has
//   them map-template/<id>/full.json                colours
//
// The same options give the same bytes on every machine. Time and memory grow with the size of the
// venue; one document is held at a time. All maps share one frame, the site seen from above with
// north up, so that a point means the same place on each of them.
//
//   GenerateOptions options;
//   options.shops = 200;
//   auto error = generateVenueFolder(options, "data/mall");
//
// Threads: free functions; the receiver is called on the caller's thread.
// Fails: by value, with one line to read that names the option or the file.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "tools/generate/GenerateOptions.hpp"

namespace tern::generate {

// Takes one document, its path relative to the venue folder; an error ends the generation.
using DocumentReceiver =
    std::function<std::optional<std::string>(const std::string& path, std::string text)>;

[[nodiscard]] std::optional<std::string> generateVenue(const GenerateOptions& options,
                                                       const DocumentReceiver& receive);

// Writes the documents below the folder, which is made when it is missing. Files of the same names
// are replaced, others stay.
[[nodiscard]] std::optional<std::string> generateVenueFolder(const GenerateOptions& options,
                                                             const std::filesystem::path& folder);

}  // namespace tern::generate
