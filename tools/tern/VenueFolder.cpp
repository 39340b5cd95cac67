#include "tools/tern/VenueFolder.hpp"

#include <memory>
#include <string>
#include <utility>
#include <variant>

#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/platform/PlainFile.hpp"

namespace tern::command {

namespace {

TernError notThere(const std::filesystem::path& folder, const std::string& file) {
  return TernError::initWithErrorType(
      TernErrorTypeObjectNotFound,
      isFolderAt(folder.string())
          ? file + ": there is no such file; links in the folder are not followed"
          : "there is no folder " + folder.string());
}

}  // namespace

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

DocumentSource documentsWithin(const std::filesystem::path& folder) {
  DocumentSource source{folder.string()};
  const auto files = makeFileSystem(std::filesystem::absolute(folder).string());
  source.read = [=,
                 named = source](const std::string& path) -> std::variant<std::string, TernError> {
    if (!files->isFile(path)) return notThere(folder, named.nameOf(path));
    auto text = files->readFile(path, maximumDocumentBytes);
    if (text) return *std::move(text);
    return TernError::initWithErrorType(TernErrorTypeUndefined,
                                        named.nameOf(path) + ": cannot be read");
  };
  return source;
}

Loaded<VenueFiles> loadFiles(const std::filesystem::path& folder,
                             std::vector<std::int64_t> venueIds) {
  auto files = std::make_shared<VenueFiles>();
  files->documents = documentsWithin(folder);
  auto venues = orFailure(tern::readVenues(files->documents));
  if (auto* failure = std::get_if<Failure>(&venues)) return std::move(*failure);
  auto chosen = chosenVenues(*std::get<std::shared_ptr<TernVenueCollection>>(venues),
                             folder.string(), std::move(venueIds));
  if (auto* failure = std::get_if<Failure>(&chosen)) return std::move(*failure);
  files->venues = std::get<std::vector<std::int64_t>>(std::move(chosen));
  for (const std::int64_t id : files->venues) {
    auto loaded = orFailure(tern::loadVenue(files->documents, id));
    if (auto* failure = std::get_if<Failure>(&loaded)) return std::move(*failure);
  }
  return files;
}

}  // namespace tern::command
