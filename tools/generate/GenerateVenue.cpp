#include "tools/generate/GenerateVenue.hpp"

#include <fstream>
#include <system_error>
#include <utility>

#include "tools/generate/Documents.hpp"

namespace tern::generate {

namespace {

std::optional<std::string> writeFile(const std::filesystem::path& path, const std::string& text) {
  std::error_code failure;
  std::filesystem::create_directories(path.parent_path(), failure);
  if (failure) return "cannot make " + path.parent_path().string() + ": " + failure.message();
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  file.close();
  if (!file) return "cannot write " + path.string();
  return std::nullopt;
}

std::optional<std::string> sendVenue(const VenueModel& venue, const DocumentReceiver& receive) {
  const std::string folder = "venue/" + std::to_string(venue.options.venue) + "/";
  if (auto error = receive(folder + "full.json", venueDocument(venue))) return error;
  if (auto error = receive(folder + "destinations.json", destinationsDocument(venue))) return error;
  for (const BuildingPlan& building : venue.site.buildings) {
    const std::string path =
        folder + "building/" + std::to_string(building.index + 1) + "/full.json";
    if (auto error = receive(path, buildingDocument(venue, building.index))) return error;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> generateVenue(const GenerateOptions& options,
                                         const DocumentReceiver& receive) {
  const PlannedVenues planned = planVenues(options);
  if (planned.error) return planned.error;
  if (auto error = receive("full.json", customerDocument(planned.venues))) return error;
  if (auto error = receive("locale/full.json", localesDocument())) return error;
  for (const VenueModel& venue : planned.venues) {
    if (auto error = sendVenue(venue, receive)) return error;
  }
  const documents::MapTemplate look = mapTemplateOf(planned.venues.front());
  return receive(pathOf(look), documentOf(look));
}

std::optional<std::string> generateVenueFolder(const GenerateOptions& options,
                                               const std::filesystem::path& folder) {
  return generateVenue(options, [&](const std::string& path, const std::string& text) {
    return writeFile(folder / path, text);
  });
}

}  // namespace tern::generate
