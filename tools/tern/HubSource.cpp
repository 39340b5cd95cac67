#include "tools/tern/HubSource.hpp"

#include <algorithm>
#include <future>
#include <mutex>
#include <tuple>
#include <utility>

#include "TernCoreKit/loading/VenueChoice.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

HttpSettings settingsOf(const HostOptions& options) {
  HttpSettings settings;
  settings.stallTimeout = options.timeout;
  settings.connectTimeout = std::min(settings.connectTimeout, settings.stallTimeout);
  settings.certificateFile = options.caFile;
  return settings;
}

// The first answer to a completion, which may be called more than once.
template <class... Answer>
class FirstAnswer {
 public:
  auto completion() const {
    return [state = state_](Answer... answer) {
      std::call_once(state->once,
                     [&] { state->promise.set_value(std::tuple(std::move(answer)...)); });
    };
  }
  std::tuple<Answer...> wait() const { return state_->promise.get_future().get(); }

 private:
  struct State {
    std::once_flag once;
    std::promise<std::tuple<Answer...>> promise;
  };
  std::shared_ptr<State> state_ = std::make_shared<State>();
};

// Waits for the graph of what a hub has loaded.
class GraphOfHub final : public TernHubDelegate {
 public:
  void wayfindDataLoaded() override { built_.completion()(true); }
  void wayfindDataFailed() override { built_.completion()(false); }
  // Whether it was built.
  bool wait() const { return std::get<0>(built_.wait()); }

 private:
  const FirstAnswer<bool> built_ = {};
};

using FirstVenue = FirstAnswer<std::shared_ptr<TernActiveVenue>, std::optional<TernError>>;

}  // namespace

HubSource::HubSource(const HostOptions& options, const std::string& cacheFolder, int diagnostics)
    : host_(options.host),
      transport_(std::make_shared<WatchedTransport>(makeHttpTransport(settingsOf(options)))) {
  setHttpTransport(transport_);
  setFileSystem(makeFileSystem(cacheFolder));
  if (options.trace) trace_.emplace(diagnostics);
  hub_ = TernHub::initCustomerWithDictionary(Value::map({{"customerId", options.customer},
                                                         {"host", options.host},
                                                         {"clientId", options.clientId},
                                                         {"clientSecret", options.clientSecret},
                                                         {"autoReloadCache", !options.noReload},
                                                         {"locale", options.locale},
                                                         {"geoJSON", options.geoJson}}));
}

HubSource::~HubSource() {
  setFileSystem(nullptr);
  setHttpTransport(nullptr);
}

Loaded<TernVenueCollection> HubSource::readVenues() {
  const FirstAnswer<std::optional<TernError>> answer;
  hub_->populateCoreWithExternalIds("", answer.completion());
  const auto [error] = answer.wait();
  if (error) return failed(*error);
  auto venues = hub_->venues();
  if (venues->getCount() == 0 && hub_->id().isAbsent()) return isEmpty("the list of venues");
  return venues;
}

std::variant<std::int64_t, Failure> HubSource::chosenVenue(std::optional<std::int64_t> venueId) {
  if (venueId) return *venueId;
  const auto venues = readVenues();
  if (const auto* failure = std::get_if<Failure>(&venues)) return *failure;
  auto only = chosenVenues(*std::get<std::shared_ptr<TernVenueCollection>>(venues), host_, {});
  if (auto* failure = std::get_if<Failure>(&only)) return std::move(*failure);
  return std::get<std::vector<std::int64_t>>(only).front();
}

Loaded<TernActiveVenue> HubSource::loadVenue(std::optional<std::int64_t> venueId,
                                             std::optional<std::int64_t> buildingId) {
  const auto id = chosenVenue(venueId);
  if (const auto* failure = std::get_if<Failure>(&id)) return *failure;
  const FirstVenue answer;
  hub_->populateVenueByVenueId(std::get<std::int64_t>(id), answer.completion());
  const auto [venue, error] = answer.wait();
  // A venue without its map template is a venue all the same.
  if (venue == nullptr) return failed(*error);
  if (auto failure = addBuildings(venue, buildingId)) return *std::move(failure);
  return venue;
}

std::optional<Failure> HubSource::addBuildings(const std::shared_ptr<TernActiveVenue>& venue,
                                               std::optional<std::int64_t> buildingId) {
  const std::string name = venueTitle(*venue) + " of " + host_;
  if (venue->id.isAbsent()) return isEmpty("the venue");
  auto ids = buildingIds(*venue, name, buildingId);
  if (auto* error = std::get_if<TernError>(&ids)) return notLoaded(std::move(*error));
  const auto& wanted = std::get<std::vector<std::int64_t>>(ids);
  const auto graph = std::make_shared<GraphOfHub>();
  hub_->setDelegate(graph);
  const FirstVenue answer;
  hub_->populateBuildingsInVenue(venue, wanted, answer.completion());
  const auto [sameVenue, error] = answer.wait();
  if (error) return failed(*error);
  if (!graph->wait()) return notLoaded(TernErrorTypeUndefined, "out of memory");
  for (const std::int64_t id : wanted) {
    const auto building = venue->buildings->findById(id);
    if (!transport_->failure().empty() && (building == nullptr || !building->floors)) {
      return isEmpty("building " + std::to_string(id));
    }
  }
  return std::nullopt;
}

std::optional<Failure> HubSource::addText(const std::string& path, const std::string& endpoint,
                                          Texts& texts) const {
  Value document;
  hub_->cache()->getCacheFileAtPath(
      endpoint, [&](const std::optional<TernError>&, Value found) { document = std::move(found); });
  if (!document.isMap()) {
    return notLoaded(TernErrorTypeUndefined, host_ + ": " + path + " could not be kept in " +
                                                 hub_->cache()->documentFolder());
  }
  texts[path] = encodeJson(document, JsonLayout::compact);
  return std::nullopt;
}

std::optional<Failure> HubSource::addTexts(std::int64_t venueId, Texts& texts) {
  auto loaded = loadVenue(venueId, std::nullopt);
  if (auto* failure = std::get_if<Failure>(&loaded)) return std::move(*failure);
  const auto& venue = *std::get<std::shared_ptr<TernActiveVenue>>(loaded);
  const std::string folder = "venue/" + std::to_string(venueId);
  if (auto failure =
          addText(folder + "/full.json", hub_->venueComponenentsAPIWithVenueID(venueId), texts)) {
    return failure;
  }
  const auto ids = buildingIds(venue, host_);
  for (const std::int64_t id : std::get<std::vector<std::int64_t>>(ids)) {
    if (auto failure = addText(folder + "/building/" + std::to_string(id) + "/full.json",
                               hub_->buildingAPIWithVenue(venue, id), texts)) {
      return failure;
    }
  }
  return std::nullopt;
}

Loaded<VenueFiles> HubSource::loadFiles(std::vector<std::int64_t> venueIds) {
  auto venues = readVenues();
  if (auto* failure = std::get_if<Failure>(&venues)) return std::move(*failure);
  auto chosen = chosenVenues(*std::get<std::shared_ptr<TernVenueCollection>>(venues), host_,
                             std::move(venueIds));
  if (auto* failure = std::get_if<Failure>(&chosen)) return std::move(*failure);
  auto files = std::make_shared<VenueFiles>();
  files->venues = std::get<std::vector<std::int64_t>>(std::move(chosen));
  const auto texts = std::make_shared<Texts>();
  if (auto failure = addText("full.json", hub_->customerFullCallAPI(), *texts)) return *failure;
  for (const std::int64_t id : files->venues) {
    if (auto failure = addTexts(id, *texts)) return *std::move(failure);
  }
  files->documents.place = host_;
  files->documents.read = [texts](const std::string& path) -> std::variant<std::string, TernError> {
    const auto found = texts->find(path);
    if (found != texts->end()) return found->second;
    return TernError::initWithErrorType(TernErrorTypeObjectNotFound, path + ": was not loaded");
  };
  return files;
}

std::string HubSource::remark() const {
  const std::string failure = transport_->failure();
  return failure.empty() ? failure
                         : host_ + ": " + failure + "; what is missing comes from the cache";
}

Failure HubSource::isEmpty(const std::string& what) const {
  const std::string failure = transport_->failure();
  auto error = TernError::initWithErrorType(
      TernErrorTypeConnection, std::nullopt,
      failure.empty() ? std::nullopt : std::optional<std::string>(failure));
  return {ExitStatus::notLoaded, std::move(error),
          host_ + ": " + what + " cannot be had" + (failure.empty() ? "" : ": " + failure)};
}

Failure HubSource::failed(const TernError& error) const {
  std::string sentence = host_ + ": " + error.message;
  if (!error.errorDescription.empty()) sentence += ": " + error.errorDescription;
  return {ExitStatus::notLoaded, error, std::move(sentence)};
}

}  // namespace tern::command
