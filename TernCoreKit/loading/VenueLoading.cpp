#include "TernCoreKit/loading/VenueLoading.hpp"

#include <future>
#include <string>
#include <utility>

#include "TernCoreKit/loading/VenueChoice.hpp"
#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"

namespace tern::inline v5 {

namespace {

using LoadedVenue = std::variant<std::shared_ptr<TernActiveVenue>, TernError>;

const char* const customerDocument = "full.json";

TernError isBroken(const DocumentSource& source, const std::string& path,
                   const std::string& reason) {
  return TernError::initWithErrorType(TernErrorTypeIncorrectJSON,
                                      source.nameOf(path) + ": " + reason);
}

TernError noMemoryLeft() {
  return TernError::initWithErrorType(TernErrorTypeUndefined, detail::outOfMemory,
                                      detail::outOfMemory);
}

// A document is always a JSON object.
std::variant<Value, TernError> readDocument(const DocumentSource& source, const std::string& path) {
  auto text = source.read(path);
  if (auto* error = std::get_if<TernError>(&text)) return std::move(*error);
  JsonResult document = decodeJson(std::move(std::get<std::string>(text)));
  if (document.error) return isBroken(source, path, *document.error);
  if (!document.value.isMap()) return isBroken(source, path, "holds no JSON object");
  return std::move(document.value);
}

std::string venueFolder(std::int64_t venueId) { return "venue/" + std::to_string(venueId); }

std::variant<std::shared_ptr<TernVenueCollection>, TernError> venuesOf(
    const DocumentSource& source) {
  auto document = readDocument(source, customerDocument);
  if (auto* error = std::get_if<TernError>(&document)) return std::move(*error);
  Value* batch = std::get<Value>(document).find("venues");
  if (batch == nullptr) return isBroken(source, customerDocument, "has no \"venues\"");
  auto venues = std::make_shared<TernVenueCollection>();
  venues->takeBatch(std::move(*batch));
  return venues;
}

std::variant<std::int64_t, TernError> onlyVenueOf(const DocumentSource& source) {
  const auto venues = venuesOf(source);
  if (const auto* error = std::get_if<TernError>(&venues)) return *error;
  return onlyVenue(*std::get<std::shared_ptr<TernVenueCollection>>(venues),
                   source.nameOf(customerDocument));
}

// A venue that is missing, said in the words of the customer's own list.
TernError missingVenue(const DocumentSource& source, std::int64_t venueId, TernError error) {
  if (error.code != TernError::defaultErrorCodeForErrorType(TernErrorTypeObjectNotFound)) {
    return error;
  }
  const auto customer = venuesOf(source);
  if (const auto* other = std::get_if<TernError>(&customer)) return *other;
  const auto& venues = *std::get<std::shared_ptr<TernVenueCollection>>(customer);
  if (venues.findById(venueId) != nullptr) return error;
  const std::string place = source.place.empty() ? customerDocument : source.place;
  return TernError::initWithErrorType(
      TernErrorTypeObjectNotFound, "there is no venue " + std::to_string(venueId) + " in " + place +
                                       "; it has " + listed(venues));
}

std::optional<TernError> addBuildings(TernActiveVenue& venue, const DocumentSource& source,
                                      const std::string& folder,
                                      std::optional<std::int64_t> buildingId,
                                      VenueDocuments* documents) {
  auto ids = buildingIds(venue, source.nameOf(folder + "/full.json"), buildingId);
  if (auto* error = std::get_if<TernError>(&ids)) return std::move(*error);
  for (const std::int64_t id : std::get<std::vector<std::int64_t>>(ids)) {
    auto answer = readDocument(source, folder + "/building/" + std::to_string(id) + "/full.json");
    if (auto* error = std::get_if<TernError>(&answer)) return std::move(*error);
    if (documents != nullptr) documents->buildings.push_back(std::get<Value>(answer));
    addBuilding(venue, id, std::move(std::get<Value>(answer)));
  }
  return std::nullopt;
}

LoadedVenue venueOf(const DocumentSource& source, std::optional<std::int64_t> venueId,
                    std::optional<std::int64_t> buildingId, VenueDocuments* documents) {
  auto id = venueId ? *venueId : onlyVenueOf(source);
  if (auto* error = std::get_if<TernError>(&id)) return std::move(*error);
  const std::int64_t chosen = std::get<std::int64_t>(id);
  const std::string folder = venueFolder(chosen);
  auto document = readDocument(source, folder + "/full.json");
  if (auto* error = std::get_if<TernError>(&document)) {
    return missingVenue(source, chosen, std::move(*error));
  }
  if (documents != nullptr) documents->venue = std::get<Value>(document);
  auto venue = TernActiveVenue::initWithDictionary(std::move(std::get<Value>(document)));
  if (auto error = addBuildings(*venue, source, folder, buildingId, documents)) {
    return *std::move(error);
  }
  attachWaypoints(*venue);
  venue->loadGridData();
  venue->loadKDTree();
  return venue;
}

class JoinListener final : public TernMultiActiveVenuesDelegate {
 public:
  void multiVenueWayfindDataLoaded() override { isLoaded_.set_value(true); }
  void multiVenueWayfindDataFailed() override { isLoaded_.set_value(false); }
  bool wait() { return isLoaded_.get_future().get(); }

 private:
  std::promise<bool> isLoaded_;
};

}  // namespace

std::variant<std::shared_ptr<TernVenueCollection>, TernError> readVenues(
    const DocumentSource& source) {
  std::variant<std::shared_ptr<TernVenueCollection>, TernError> venues;
  const auto read = [&] { venues = venuesOf(source); };
  return detail::attempt(read) ? std::move(venues) : noMemoryLeft();
}

LoadedVenue loadVenue(const DocumentSource& source, std::optional<std::int64_t> venueId,
                      std::optional<std::int64_t> buildingId, VenueDocuments* documents) {
  LoadedVenue venue;
  const auto load = [&] { venue = venueOf(source, venueId, buildingId, documents); };
  return detail::attempt(load) ? std::move(venue) : noMemoryLeft();
}

std::shared_ptr<TernMultiActiveVenues> joinVenues(
    const std::vector<std::shared_ptr<TernActiveVenue>>& venues) {
  std::shared_ptr<TernMultiActiveVenues> joined;
  detail::attempt([&] {
    const auto listener = std::make_shared<JoinListener>();
    auto made = TernMultiActiveVenues::initWithActiveVenues(venues, listener);
    if (listener->wait()) joined = std::move(made);
  });
  return joined;
}

}  // namespace tern
