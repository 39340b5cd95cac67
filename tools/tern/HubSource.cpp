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
  auto only = onlyVenue(*std::get<std::shared_ptr<TernVenueCollection>>(venues), host_);
  if (auto* error = std::get_if<TernError>(&only)) return notLoaded(std::move(*error));
  return std::get<std::int64_t>(only);
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
