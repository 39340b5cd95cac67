#include "tools/tern/VenueFolder.hpp"

#include <fstream>
#include <future>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Json.hpp"

namespace tern::command {

namespace {

namespace fs = std::filesystem;

Failure isBroken(const fs::path& file, const std::string& reason) {
  return notLoaded(TernErrorTypeIncorrectJSON, file.string() + ": " + reason);
}

// Only plain files are opened: reading a pipe or a device might never end.
std::variant<std::string, Failure> readText(const fs::path& file) {
  std::error_code error;
  const fs::file_status status = fs::status(file, error);
  if (status.type() == fs::file_type::not_found) return notFound(file.string() + ": no such file");
  if (error) return notFound(file.string() + ": " + error.message());
  if (!fs::is_regular_file(status)) return notFound(file.string() + ": is no file");
  const std::uintmax_t size = fs::file_size(file, error);
  if (error) return notFound(file.string() + ": " + error.message());
  if (size > maximumDocumentBytes) return isBroken(file, "is larger than 1 GiB");
  std::string text(static_cast<std::size_t>(size), '\0');
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return notFound(file.string() + ": cannot be opened");
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (!stream) return notFound(file.string() + ": cannot be read to its end");
  return text;
}

// A document is always a JSON object.
std::variant<Value, Failure> readDocument(const fs::path& file) {
  auto text = readText(file);
  if (auto* failure = std::get_if<Failure>(&text)) return std::move(*failure);
  JsonResult document = decodeJson(std::move(std::get<std::string>(text)));
  if (document.error) return isBroken(file, *document.error);
  if (!document.value.isMap()) return isBroken(file, "holds no JSON object");
  return std::move(document.value);
}

fs::path venueFile(const fs::path& folder, std::int64_t venueId) {
  return folder / "venue" / std::to_string(venueId) / "full.json";
}

std::variant<std::int64_t, Failure> onlyVenueOf(const fs::path& folder) {
  const auto venues = readVenues(folder);
  if (const auto* failure = std::get_if<Failure>(&venues)) return *failure;
  return onlyVenue(*std::get<std::shared_ptr<TernVenueCollection>>(venues),
                   (folder / "full.json").string());
}

// A venue that is missing, said in the words of the customer's own list.
Failure missingVenue(const fs::path& folder, std::int64_t venueId, Failure failure) {
  if (failure.error.code != TernError::defaultErrorCodeForErrorType(TernErrorTypeObjectNotFound)) {
    return failure;
  }
  const auto customer = readVenues(folder);
  if (const auto* other = std::get_if<Failure>(&customer)) return *other;
  const auto& venues = *std::get<std::shared_ptr<TernVenueCollection>>(customer);
  if (venues.findById(venueId) != nullptr) return failure;
  return notFound("there is no venue " + std::to_string(venueId) + " in " + folder.string() +
                  "; it has " + listed(venues));
}

std::optional<Failure> addBuildings(TernActiveVenue& venue, const fs::path& venueFile,
                                    std::optional<std::int64_t> buildingId,
                                    VenueDocuments* documents) {
  auto ids = buildingIds(venue, venueFile.string(), buildingId);
  if (auto* failure = std::get_if<Failure>(&ids)) return std::move(*failure);
  const fs::path folder = venueFile.parent_path() / "building";
  for (const std::int64_t id : std::get<std::vector<std::int64_t>>(ids)) {
    auto answer = readDocument(folder / std::to_string(id) / "full.json");
    if (auto* failure = std::get_if<Failure>(&answer)) return std::move(*failure);
    if (documents != nullptr) documents->buildings.push_back(std::get<Value>(answer));
    addBuilding(venue, id, std::move(std::get<Value>(answer)));
  }
  return std::nullopt;
}

// Whether routes can be searched.
bool buildGraph(TernActiveVenue& venue) {
  std::promise<bool> isBuilt;
  venue.updateWayfindDataWithCompletion([&](bool isDone) { isBuilt.set_value(isDone); });
  return isBuilt.get_future().get();
}

}  // namespace

Loaded<TernVenueCollection> readVenues(const fs::path& folder) {
  std::error_code error;
  if (!fs::is_directory(folder, error)) return notFound("there is no folder " + folder.string());
  auto document = readDocument(folder / "full.json");
  if (auto* failure = std::get_if<Failure>(&document)) return std::move(*failure);
  Value* batch = std::get<Value>(document).find("venues");
  if (batch == nullptr) return isBroken(folder / "full.json", "has no \"venues\"");
  auto venues = std::make_shared<TernVenueCollection>();
  venues->takeBatch(std::move(*batch));
  return venues;
}

Loaded<TernActiveVenue> loadVenue(const fs::path& folder, std::optional<std::int64_t> venueId,
                                  std::optional<std::int64_t> buildingId,
                                  VenueDocuments* documents) {
  auto id = venueId ? *venueId : onlyVenueOf(folder);
  if (auto* failure = std::get_if<Failure>(&id)) return std::move(*failure);
  const std::int64_t chosen = std::get<std::int64_t>(id);
  const fs::path file = venueFile(folder, chosen);
  auto document = readDocument(file);
  if (auto* failure = std::get_if<Failure>(&document)) {
    return missingVenue(folder, chosen, std::move(*failure));
  }
  if (documents != nullptr) documents->venue = std::get<Value>(document);
  auto venue = TernActiveVenue::initWithDictionary(std::move(std::get<Value>(document)));
  if (auto failure = addBuildings(*venue, file, buildingId, documents)) return *std::move(failure);
  attachWaypoints(*venue);
  if (!buildGraph(*venue)) return notLoaded(TernErrorTypeUndefined, "out of memory");
  return venue;
}

}  // namespace tern::command
