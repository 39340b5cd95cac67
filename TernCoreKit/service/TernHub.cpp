#include "TernCoreKit/service/TernHub.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernLocaleCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/collections/VenueDestinationCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernVenueDestination.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/platform/Notifications.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/service/ServiceHost.hpp"
#include "TernCoreKit/service/TernCoreUtils.hpp"
#include "TernCoreKit/service/detail/CachedFetch.hpp"
#include "TernCoreKit/service/detail/LoadsInTurn.hpp"
#include "TernCoreKit/service/detail/OutOfMemory.hpp"
#include "TernCoreKit/service/detail/UncachedFetch.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"

namespace tern::inline v5 {

using detail::AnswerSource;

namespace {

constexpr std::string_view defaultLocale = "en-US";

TernError notFound(std::string message) {
  return TernError::initWithErrorType(TernErrorTypeObjectNotFound, std::move(message));
}

TernError wrongArgument(std::optional<std::string> message = std::nullopt,
                        std::optional<std::string> description = std::nullopt) {
  return TernError::initWithErrorType(TernErrorTypeIncorrectObjectType, std::move(message),
                                      std::move(description));
}

// What a load without data ends with, once that has been announced.
TernError failedWithoutData(std::string_view endpoint) {
  auto error = TernError::initWithErrorType(TernErrorTypeObjectNotFound, std::nullopt,
                                            "Data was not returned from server or local cache");
  TernHub::failedServerPluginResponseForApi(endpoint, error);
  return error;
}

// Locales and map templates, in one wording, come from the cache only when it holds something.
std::optional<TernError> errorOfCached(AnswerSource source, const Value& answer) {
  if (source == AnswerSource::service || answer.size() > 0) return std::nullopt;
  return notFound("Could not populate locales with cache.");
}

std::string orNull(const Value& value) { return value.isAbsent() ? "(null)" : value.printed(); }

template <class Items, class Print>
std::string joined(const Items& items, Print print) {
  std::string text;
  for (const auto& item : items) {
    if (!text.empty()) text += ',';
    text += print(item);
  }
  return text;
}

// Whether the text can stand in a header. One that cannot would fail every request that sends it.
bool isHeaderValue(std::string_view text) {
  constexpr std::size_t longest = 256;
  return text.size() <= longest &&
         std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

// When a service's answer was made, as it says; absent when it does not, or not in a usable way.
Value stampOf(const Value& answer) {
  const Value* history = answer.find("recordHistory");
  const Value& stamp = history != nullptr ? (*history)["updatedAt"] : answer["generatedAt"];
  const bool isUsable = stamp.isNumber() || (stamp.isText() && isHeaderValue(stamp.text()));
  return isUsable ? stamp : Value();
}

void addEntries(Value& payload, const Value& data) {
  for (const Value::Entry& entry : data.entries()) payload.set(entry.key.text(), entry.value);
}

Value mapOf(const Value& data) { return data.isMap() ? data : Value::map(); }

// One for which there is no memory is left out: what it tells of goes on.
void announce(std::string_view name, std::string_view endpoint, const auto& payloadOf) {
  if (endpoint.empty()) return;
  detail::attempt([&] {
    Value payload = payloadOf();
    payload.set("endpoint", endpoint);
    postNotification(name, payload);
  });
}

// Calls a completion that takes an error, or something and an error.
void endOutOfMemory(const auto& completion) {
  if constexpr (requires { completion(detail::outOfMemoryError()); }) {
    completion(detail::outOfMemoryError());
  } else {
    completion({}, detail::outOfMemoryError());
  }
}

// Ends with the records of a collection that should be loaded by now.
void endWithAll(const auto& loaded, std::optional<TernError> error, const auto& completion) {
  if (error || loaded == nullptr) return completion.get()({}, std::move(error));
  decltype(loaded->getAll()) all;
  if (!detail::attempt([&] { all = loaded->getAll(); })) return endOutOfMemory(completion.get());
  completion(std::move(all), std::nullopt);
}

// Runs the first steps of a load, up to where its completion is in the hands of others.
template <class Completion, class Steps>
void begin(Completion completion, Steps steps) {
  detail::attemptWith(std::move(completion), steps,
                      [](const Completion& ended) { endOutOfMemory(ended); });
}

}  // namespace

struct TernHub::Fields {
  std::string hostURL;
  Value customer;
  bool autoCache = true;
  bool geoJSON = false;
  bool isMultiActiveVenues = false;
  std::weak_ptr<TernHubDelegate> delegate;
  std::weak_ptr<TernMultiActiveVenuesDelegate> multiVenueDelegate;
  Value name;
  std::shared_ptr<TernVenueCollection> venues;
  std::shared_ptr<TernLocaleCollection> locales;
  std::shared_ptr<TernActiveVenue> activeVenue;
  std::string locale{defaultLocale};
  std::shared_ptr<VenueDestinationCollection> venueDestinations;
  Value id;
  Value venuesDictionary;
  Value localeDictionary;
  std::shared_ptr<HTTPClient> client;
  Value temporaryCache;
  std::shared_ptr<TernFileCaching> cache;
  std::shared_ptr<OAuthConnector> auth;
  std::shared_ptr<TernMultiActiveVenues> multiActiveVenues;

  // Takes the value under the name of a field that a document can hold; a value of another kind
  // means nothing. Where the hub connects says the application alone: a document that could change
  // that would send the token wherever it likes.
  void take(std::string_view key, Value& value) {
    struct PlainField {
      std::string_view name;
      bool (Value::*isKind)() const noexcept;
      Value Fields::*field;
    };
    static constexpr std::array plainFields{
        PlainField{"name", &Value::isText, &Fields::name},
        PlainField{"id", &Value::isNumber, &Fields::id},
        PlainField{"customer", &Value::isNumber, &Fields::customer},
        PlainField{"venuesDictionary", &Value::isMap, &Fields::venuesDictionary},
        PlainField{"localeDictionary", &Value::isMap, &Fields::localeDictionary}};
    for (const PlainField& field : plainFields) {
      if (key == field.name && (value.*field.isKind)()) this->*field.field = std::move(value);
    }
    if (key == "locale" && value.isText()) locale = value.text();
    if (key == "geoJSON" && value.isBoolean()) geoJSON = value.flag();
    if (key == "autoCache" && value.isBoolean()) autoCache = value.flag();
  }
};

TernHub::TernHub() : fields_(std::make_unique<Fields>()) {
  fields_->cache = TernFileCaching::initWithVersion(std::string(getSDKVersion()));
}

TernHub::~TernHub() = default;

std::shared_ptr<TernHub> TernHub::initWithCustomerId(std::int64_t customerId, bool autoReloadCache,
                                                     std::string host, std::string_view clientId,
                                                     std::string_view clientSecret) {
  const std::shared_ptr<TernHub> hub(new TernHub);
  const MutexLock lock(hub->mutex_);
  Fields& fields = *hub->fields_;
  fields.customer = customerId;
  fields.autoCache = autoReloadCache;
  fields.hostURL = std::move(host);
  hub->setCredentials(clientId, clientSecret);
  return hub;
}

std::shared_ptr<TernHub> TernHub::initCustomerWithDictionary(const Value& options) {
  const std::shared_ptr<TernHub> hub(new TernHub);
  const MutexLock lock(hub->mutex_);
  Fields& fields = *hub->fields_;
  fields.customer = options["customerId"];
  fields.hostURL = options["host"].text();
  if (const Value* reload = options.find("autoReloadCache")) fields.autoCache = reload->flag();
  if (const Value* locale = options.find("locale")) fields.locale = locale->printed();
  fields.geoJSON = options["geoJSON"].flag();
  const Value* clientId = options.find("clientId");
  const Value* clientSecret = options.find("clientSecret");
  if (options.find("host") != nullptr && clientId != nullptr && clientSecret != nullptr) {
    hub->setCredentials(clientId->text(), clientSecret->text());
  }
  return hub;
}

void TernHub::setCredentials(std::string_view clientId, std::string_view clientSecret) {
  fields_->auth = OAuthConnector::sharedInstance();
  fields_->auth->setCredentialsWithClientId(clientId, clientSecret, fields_->hostURL);
}

template <class Part>
Part TernHub::read(Part Fields::*part) const {
  const MutexLock lock(mutex_);
  return (*fields_).*part;
}

// The old value goes away outside the lock.
template <class Part>
void TernHub::write(Part Fields::*part, std::type_identity_t<Part> value) {
  const MutexLock lock(mutex_);
  std::swap((*fields_).*part, value);
}

// Endpoints

std::string TernHub::customerPath() const {
  return "/QRVS/api/customer/" + orNull(read(&Fields::customer));
}

std::string TernHub::query(std::string_view locale) const {
  std::string query = "?v=";
  query += getServerVersion();
  query += "&locale=";
  query += locale;
  query += "&geojson=";
  query += geoJSON() ? "true" : "false";
  return query;
}

std::string TernHub::customerFullCallAPI() const {
  return customerPath() + "/full" + query(locale());
}

std::string TernHub::customerFullCallAPIWithExternalVenueIds(std::string_view externalIds) const {
  return customerFullCallAPI() + "&externalIds=" + std::string(externalIds);
}

std::string TernHub::localesAPI() const {
  return customerPath() + "/locale/full" + query(locale());
}

std::string TernHub::venueComponenentsAPIWithVenueID(std::int64_t venueId) const {
  return customerPath() + "/venue/" + std::to_string(venueId) + "/full" + query(locale());
}

std::string TernHub::buildingAPIWithVenue(const TernActiveVenue& venue,
                                          std::int64_t buildingId) const {
  return customerPath() + "/venue/" + orNull(venue.id) + "/building/" + std::to_string(buildingId) +
         "/full" + query(locale());
}

std::string TernHub::getRequest(std::string_view path) const {
  return customerPath() + std::string(path) + query(locale());
}

std::string TernHub::destinationsComponenentsAPIWithVenueIDs(std::string_view venueIds) const {
  return customerPath() + "/destination/full?venueIds=" + std::string(venueIds);
}

// Customer and locales

bool TernHub::lacksCustomer() const {
  return hostURL().empty() || customer().isAbsent() || customer().isNull();
}

void TernHub::populateCoreWithExternalIds(std::string_view externalIds, Completion completion) {
  // The completion may let the hub go.
  begin(std::move(completion), [&, self = shared_from_this()](const auto& kept) {
    write(&Fields::id, {});
    if (lacksCustomer()) kept(wrongArgument());
    auto endpoint = externalIds.empty() ? customerFullCallAPI()
                                        : customerFullCallAPIWithExternalVenueIds(externalIds);
    fetchCached(
        self, detail::customerRules, endpoint,
        [self, endpoint, kept](std::optional<TernError> error, Value answer, AnswerSource source) {
          if (error) return kept(std::move(error));
          if (source == AnswerSource::service) {
            self->takeCore(std::move(answer), endpoint);
          } else if (source == AnswerSource::cacheInstead) {
            self->takeCachedCore(std::move(answer), endpoint);
          } else {
            self->initWithDictionary(std::move(answer));
          }
          kept(std::nullopt);
        });
  });
}

void TernHub::takeCore(Value answer, std::string_view endpoint) {
  initWithDictionary(std::move(answer));
  successfulServerPluginsResponseForApi(endpoint);
}

void TernHub::takeCachedCore(Value answer, std::string_view endpoint) {
  if (venues() == nullptr) takeCore(std::move(answer), endpoint);
}

void TernHub::validateExistingCoreForCacheWithEndpoint(std::string_view endpoint,
                                                       const Completion& completion) {
  takeCachedCore(returnTemporaryCache(), endpoint);
  completion(std::nullopt);
}

void TernHub::initWithDictionary(Value answer) {
  auto venues = std::make_shared<TernVenueCollection>();
  if (Value* batch = answer.find("venues")) venues->takeBatch(std::move(*batch));
  const MutexLock lock(mutex_);
  for (Value::Entry& entry : answer.entries()) fields_->take(entry.key.text(), entry.value);
  fields_->venues.swap(venues);
}

void TernHub::getVenues(VenuesCompletion completion) {
  begin(std::move(completion), [&](const auto& kept) {
    const auto loaded = venues();
    if (loaded != nullptr && loaded->getCount() > 0) return kept(loaded->getAll(), std::nullopt);
    getVenuesWithExternalIds({}, kept);
  });
}

void TernHub::getVenuesWithExternalIds(const std::vector<std::string>& externalIds,
                                       VenuesCompletion completion) {
  begin(std::move(completion), [&](const auto& kept) {
    populateCoreWithExternalIds(joined(externalIds, [](const std::string& id) { return id; }),
                                [self = shared_from_this(), kept](std::optional<TernError> error) {
                                  endWithAll(self->venues(), std::move(error), kept);
                                });
  });
}

void TernHub::getLocales(LocalesCompletion completion) {
  begin(std::move(completion), [&](const auto& kept) {
    if (const auto loaded = locales()) return kept(loaded->getAll(), std::nullopt);
    populateLocales([self = shared_from_this(), kept](std::optional<TernError> error) {
      endWithAll(self->locales(), std::move(error), kept);
    });
  });
}

void TernHub::populateLocales(Completion completion) {
  begin(std::move(completion), [&, self = shared_from_this()](const auto& kept) {
    if (lacksCustomer()) kept(wrongArgument());
    fetchCached(self, detail::quietRules, localesAPI(),
                [self, kept](std::optional<TernError> error, Value answer, AnswerSource source) {
                  if (!error) error = errorOfCached(source, answer);
                  if (error) return kept(std::move(error));
                  auto locales = std::make_shared<TernLocaleCollection>();
                  locales->takeBatch(std::move(answer));
                  self->write(&Fields::locales, std::move(locales));
                  kept(std::nullopt);
                });
  });
}

// Venues and buildings

void TernHub::populateVenue(const std::shared_ptr<TernVenue>& venue, VenueCompletion completion) {
  write(&Fields::activeVenue, nullptr);
  if (venue == nullptr) return completion(nullptr, wrongArgument());
  populateVenueByVenueId(venue->id.integer(), std::move(completion));
}

void TernHub::populateVenueByVenueId(std::int64_t venueId, VenueCompletion completion) {
  write(&Fields::activeVenue, nullptr);
  begin(std::move(completion), [&](const auto& kept) {
    auto endpoint = venueComponenentsAPIWithVenueID(venueId);
    fetchCached(shared_from_this(), detail::venueRules, endpoint,
                [self = shared_from_this(), endpoint, venueId, kept](std::optional<TernError> error,
                                                                     Value answer, AnswerSource) {
                  if (error) return kept(nullptr, std::move(error));
                  self->populateVenueWithData(std::move(answer), endpoint, venueId, kept.get());
                });
  });
}

// The venue is made of the data as they came: what names it is the document itself.
void TernHub::populateVenueWithData(Value data, std::string_view endPoint, std::int64_t /*venueId*/,
                                    VenueCompletion completion) {
  if (!data.isMap()) return completion(nullptr, failedWithoutData(endPoint));
  auto venue = TernActiveVenue::initWithDictionary(std::move(data));
  write(&Fields::activeVenue, venue);
  successfulServerPluginsResponseForApi(endPoint);
  if (!venue->defaultMapTemplateId.isText()) return completion(std::move(venue), std::nullopt);
  loadMapTemplate(std::move(venue), std::move(completion));
}

void TernHub::populateMapTemplatesWithCompletionHandler(VenueCompletion completion) {
  auto venue = activeVenue();
  if (venue == nullptr || !venue->defaultMapTemplateId.isText()) {
    return completion(std::move(venue), wrongArgument());
  }
  loadMapTemplate(std::move(venue), std::move(completion));
}

void TernHub::loadMapTemplate(std::shared_ptr<TernActiveVenue> venue, VenueCompletion completion) {
  begin(std::move(completion), [&](const auto& kept) {
    auto endpoint = customerPath() + "/map-template/" +
                    std::string(venue->defaultMapTemplateId.text()) + "/full" +
                    query(defaultLocale);
    fetchCached(shared_from_this(), detail::quietRules, std::move(endpoint),
                [venue, kept](std::optional<TernError> error, Value answer, AnswerSource source) {
                  if (!error) error = errorOfCached(source, answer);
                  if (!error) venue->storeMapTemplateData(std::move(answer));
                  kept(venue, std::move(error));
                });
  });
}

void TernHub::populateVenueWithDefaultBuildingByVenueId(std::int64_t venueId,
                                                        VenueCompletion completion) {
  loadVenueWithBuilding(
      venueId,
      [](const TernActiveVenue& venue) -> std::variant<std::int64_t, TernError> {
        const auto building = venue.buildings ? venue.buildings->getDefault() : nullptr;
        if (building == nullptr) return notFound("Default building not found.");
        return building->id.integer();
      },
      std::move(completion));
}

void TernHub::populateVenueWithBuildingByVenueId(std::int64_t venueId, std::int64_t buildingId,
                                                 VenueCompletion completion) {
  loadVenueWithBuilding(
      venueId, [=](const TernActiveVenue&) { return buildingId; }, std::move(completion));
}

// A venue without its map template is a venue all the same.
void TernHub::loadVenueWithBuilding(std::int64_t venueId, ChooseBuilding choose,
                                    VenueCompletion completion) {
  begin(std::move(completion), [&](const auto& kept) {
    populateVenueByVenueId(
        venueId, [self = shared_from_this(), choose = std::move(choose), kept](
                     std::shared_ptr<TernActiveVenue> venue, std::optional<TernError> error) {
          if (venue == nullptr) return kept(nullptr, std::move(error));
          const auto go = [&] {
            auto chosen = choose(*venue);
            if (auto* none = std::get_if<TernError>(&chosen))
              return kept(nullptr, std::move(*none));
            self->populateBuildingInVenue(venue, std::get<std::int64_t>(chosen), kept);
          };
          if (!detail::attempt(go)) endOutOfMemory(kept.get());
        });
  });
}

void TernHub::populateBuildingInVenue(const std::shared_ptr<TernActiveVenue>& venue,
                                      std::int64_t buildingId, VenueCompletion completion) {
  if (venue == nullptr) return completion(nullptr, wrongArgument());
  begin(std::move(completion), [&](const auto& kept) {
    loadBuilding(
        venue, buildingId, [self = shared_from_this(), venue] { self->finishBuildings(venue); },
        [venue, kept](std::optional<TernError> error) {
          if (error) return kept(nullptr, std::move(error));
          kept(venue, std::nullopt);
        });
  });
}

void TernHub::populateBuildingsInVenue(const std::shared_ptr<TernActiveVenue>& venue,
                                       std::vector<std::int64_t> buildingIds,
                                       VenueCompletion completion) {
  if (venue == nullptr) return completion(nullptr, wrongArgument());
  struct Outcome {
    bool hasBuilding = false;
    std::optional<TernError> error;
  };
  begin(std::move(completion), [&, self = shared_from_this()](const auto& kept) {
    const auto outcome = std::make_shared<Outcome>();
    const auto load = [self, venue, outcome](std::int64_t buildingId,
                                             const detail::LoadNext& next) {
      self->loadBuilding(
          venue, buildingId, [outcome] { outcome->hasBuilding = true; },
          [outcome, next](std::optional<TernError> error) {
            if (!outcome->error) outcome->error = std::move(error);
            next();
          });
    };
    const auto finish = [self, venue, outcome, kept](bool areAllBegun) {
      const auto build = [&] { self->finishBuildings(venue); };
      const bool isBuilt = !outcome->hasBuilding || detail::attempt(build);
      if (!(areAllBegun && isBuilt) && !outcome->error) outcome->error = detail::outOfMemoryError();
      kept(venue, std::move(outcome->error));
    };
    detail::loadInTurn(std::move(buildingIds), load, finish);
  });
}

void TernHub::loadBuilding(const std::shared_ptr<TernActiveVenue>& venue, std::int64_t buildingId,
                           std::function<void()> taken, Completion completion) {
  begin(std::move(completion), [&](const auto& kept) {
    if (!venue->buildings || venue->buildings->findById(buildingId) == nullptr) {
      return kept(notFound("Building with ID: " + std::to_string(buildingId) + " not found."));
    }
    auto endpoint = buildingAPIWithVenue(*venue, buildingId);
    fetchCached(shared_from_this(), detail::buildingRules, endpoint,
                [self = shared_from_this(), venue, buildingId, endpoint, taken = std::move(taken),
                 kept](std::optional<TernError> error, Value answer, AnswerSource) {
                  if (error) return kept(std::move(error));
                  self->takeBuilding(std::move(answer), endpoint, venue, buildingId, taken);
                  kept(std::nullopt);
                });
  });
}

void TernHub::takeBuilding(Value data, std::string_view endPoint,
                           const std::shared_ptr<TernActiveVenue>& venue, std::int64_t buildingId,
                           const std::function<void()>& taken) {
  {
    const MutexLock lock(venue->recordsMutex());
    addBuilding(*venue, buildingId, std::move(data));
  }
  write(&Fields::activeVenue, venue);
  taken();
  successfulServerPluginsResponseForApi(endPoint);
}

void TernHub::populateBuildingWithData(Value data, std::string_view endPoint,
                                       const std::shared_ptr<TernActiveVenue>& venue,
                                       std::int64_t buildingId, VenueCompletion completion) {
  if (venue == nullptr) return completion(nullptr, wrongArgument());
  if (!data.isMap()) return completion(nullptr, failedWithoutData(endPoint));
  takeBuilding(std::move(data), endPoint, venue, buildingId, [&] { finishBuildings(venue); });
  completion(venue, std::nullopt);
}

void TernHub::finishBuildings(const std::shared_ptr<TernActiveVenue>& venue) {
  {
    const MutexLock lock(venue->recordsMutex());
    attachWaypoints(*venue);
  }
  if (isMultiActiveVenues()) return;
  venue->updateWayfindDataWithCompletion([self = shared_from_this()](bool isBuilt) {
    const auto listener = self->delegate();
    if (listener == nullptr) return;
    isBuilt ? listener->wayfindDataLoaded() : listener->wayfindDataFailed();
  });
}

void TernHub::populateVenuesWithDefaultBuilding(std::vector<std::int64_t> venueIds,
                                                MultiVenueCompletion completion) {
  write(&Fields::isMultiActiveVenues, true);
  const auto fail = [self = shared_from_this()](const MultiVenueCompletion& ended,
                                                std::optional<TernError> error) {
    self->write(&Fields::isMultiActiveVenues, false);
    ended(nullptr, std::move(error));
  };
  const auto steps = [&, self = shared_from_this()](const auto& kept) {
    const auto venues = std::make_shared<std::vector<std::shared_ptr<TernActiveVenue>>>();
    venues->reserve(venueIds.size());
    const auto load = [self, venues, kept, fail](std::int64_t venueId,
                                                 const detail::LoadNext& next) {
      const auto joined = self->multiActiveVenues();
      if (joined != nullptr && joined->venueConnections().contains(std::to_string(venueId))) {
        return next();
      }
      self->populateVenueWithDefaultBuildingByVenueId(
          venueId, [venues, kept, fail, next](std::shared_ptr<TernActiveVenue> venue,
                                              std::optional<TernError> error) {
            if (error) fail(kept.get(), std::move(error));
            if (venue != nullptr) venues->push_back(std::move(venue));
            next();
          });
    };
    const auto finish = [self, venues, kept, fail](bool areAllBegun) {
      const auto join = [&] { self->joinVenues(*venues); };
      if (!areAllBegun || !detail::attempt(join))
        return fail(kept.get(), detail::outOfMemoryError());
      self->write(&Fields::isMultiActiveVenues, false);
      kept(self->multiActiveVenues(), std::nullopt);
    };
    detail::loadInTurn(std::move(venueIds), load, finish);
  };
  detail::attemptWith(std::move(completion), steps, [&](const MultiVenueCompletion& ended) {
    fail(ended, detail::outOfMemoryError());
  });
}

void TernHub::joinVenues(const std::vector<std::shared_ptr<TernActiveVenue>>& venues) {
  if (const auto joined = multiActiveVenues()) return joined->updateActiveVenues(venues);
  write(&Fields::multiActiveVenues,
        TernMultiActiveVenues::initWithActiveVenues(venues, read(&Fields::multiVenueDelegate)));
}

void TernHub::destroyActiveVenue() {
  write(&Fields::activeVenue, nullptr);
  write(&Fields::autoCache, true);
  write(&Fields::cache, nullptr);
}

// What is never cached

void TernHub::populateDestinationsForVenues(const std::vector<std::int64_t>& venueIds,
                                            DestinationsCompletion completion) {
  begin(std::move(completion), [&](const auto& kept) {
    auto endpoint = destinationsComponenentsAPIWithVenueIDs(
        joined(venueIds, [](std::int64_t id) { return std::to_string(id); }));
    fetchUncached(shared_from_this(), detail::UncachedHost::ofDestinations, std::move(endpoint),
                  [self = shared_from_this(), kept](Value answer, std::optional<TernError> error) {
                    if (error) return kept(nullptr, std::move(error));
                    self->parsePopulateDestinationsForVenues(std::move(answer), kept.get());
                  });
  });
}

void TernHub::parsePopulateDestinationsForVenues(Value answer,
                                                 const DestinationsCompletion& completion) {
  if (answer.isMap()) {
    VenueDestinationCollection::Entries entries;
    if (Value* items = answer.find("items")) {
      for (Value& item : items->items()) {
        entries.push_back(TernVenueDestination::initWithDictionary(std::move(item)));
      }
    }
    write(&Fields::venueDestinations,
          VenueDestinationCollection::initWithItems(std::move(entries)));
  }
  completion(venueDestinations(), std::nullopt);
}

void TernHub::getRequest(const Value& path, AnswerCompletion completion) {
  begin(std::move(completion), [&](const auto& kept) {
    if (!path.isText()) {
      return kept(Value(), wrongArgument("Invalid URL", "URL should be an NSString"));
    }
    fetchUncached(shared_from_this(), detail::UncachedHost::ofHub, getRequest(path.text()), kept);
  });
}

// Cache

void TernHub::checkCachingWithEndPoint(std::string_view endPoint,
                                       const StampCompletion& completion) {
  const auto none = [&] {
    completion(TernError::initWithErrorType(TernErrorTypeObjectNotFound, "No Cache found",
                                            "No cache found for path " + std::string(endPoint)),
               {});
  };
  const auto disk = cache();
  if (disk == nullptr || !disk->doesFileExistsAtPath(endPoint)) return none();
  disk->getCacheFileAtPath(endPoint, [&](std::optional<TernError> error, Value answer) {
    if (error) return completion(std::move(error), {});
    if (!answer.isMap()) return none();
    Value stamp = stampOf(answer);
    if (!stamp.isAbsent()) write(&Fields::temporaryCache, std::move(answer));
    completion(std::nullopt, std::move(stamp));
  });
}

void TernHub::saveData(const Value& data, const Value& cacheFilePath,
                       const Completion& completion) const {
  if (!data.isMap() || !cacheFilePath.isText()) {
    return completion(wrongArgument(
        std::nullopt, "Must have data and filePath parameter provided in order to cache data."));
  }
  const auto disk = cache();
  const auto reportFailure = [&](std::optional<TernError> error) {
    if (error) completion(std::move(error));
  };
  const auto save = [&] {
    TernCoreUtils::createJSONWithData(
        data, [&](std::optional<std::string> error, const std::optional<std::string>& text) {
          if (error) {
            if (disk != nullptr) disk->deleteFileAtPath(cacheFilePath, reportFailure);
            return completion(TernError::initWithErrorType(TernErrorTypeIncorrectJSON, std::nullopt,
                                                           std::move(error)));
          }
          if (disk != nullptr && disk->replaceData(*text, cacheFilePath, reportFailure)) {
            return completion(std::nullopt);
          }
          completion(TernError::initWithErrorType(TernErrorTypeUndefined, std::nullopt,
                                                  "Could not cache file at path"));
        });
  };
  if (!detail::attempt(save)) endOutOfMemory(completion);
}

Value TernHub::returnTemporaryCache() {
  Value taken = Value::map();
  const MutexLock lock(mutex_);
  if (fields_->temporaryCache.isMap()) std::swap(taken, fields_->temporaryCache);
  fields_->temporaryCache = Value();
  return taken;
}

void TernHub::clearTemporaryCache() { write(&Fields::temporaryCache, {}); }

void TernHub::clearAllCache() const {
  const auto disk = cache();
  if (disk == nullptr) return;
  disk->clearCacheCompletion([](const std::optional<TernError>& error) {
    if (error) logLine("Error: " + error->errorDescription);
  });
}

void TernHub::clearCacheByVenueId(std::int64_t venueId) const {
  const auto disk = cache();
  if (disk == nullptr) return;
  disk->deleteFileAtPath(venueComponenentsAPIWithVenueID(venueId),
                         [](const std::optional<TernError>& error) {
                           if (error) logLine("Error: " + error->errorDescription);
                         });
}

// Notifications

void TernHub::startServerPluginResponseForApi(std::string_view endpoint, const Value& data) {
  announce("TERN_CORE_SERVER_REQUEST_START", endpoint, [&] { return mapOf(data); });
}

void TernHub::failedServerPluginResponseForApi(std::string_view endpoint,
                                               const std::optional<TernError>& error,
                                               const Value& data) {
  if (!error) return;
  announce("TERN_CORE_SERVER_REQUEST_FAILED", endpoint, [&] {
    Value payload = Value::map({{"endpoint", endpoint},
                                {"error", Value::map({{"code", error->code},
                                                      {"description", error->errorDescription},
                                                      {"message", error->message}})}});
    addEntries(payload, data);
    return payload;
  });
}

void TernHub::successfulServerPluginsResponseForApi(std::string_view endpoint,
                                                    const Value& values) {
  announce("TERN_CORE_SERVER_REQUEST_SUCCESS", endpoint, [&] { return mapOf(values); });
}

Value TernHub::addToItemDictionary(const Value& dictionary, std::string_view key,
                                   const Value& value) {
  Value copy = dictionary;
  if (Value* items = copy.find("items")) {
    for (Value& item : items->items()) item.set(key, value);
  }
  return copy;
}

// Fields

std::string TernHub::hostURL() const { return read(&Fields::hostURL); }
void TernHub::setHostURL(std::string hostURL) { write(&Fields::hostURL, std::move(hostURL)); }
Value TernHub::customer() const { return read(&Fields::customer); }
void TernHub::setCustomer(Value customer) { write(&Fields::customer, std::move(customer)); }
bool TernHub::autoCache() const { return read(&Fields::autoCache); }
void TernHub::setAutoCache(bool autoCache) { write(&Fields::autoCache, autoCache); }
bool TernHub::geoJSON() const { return read(&Fields::geoJSON); }
void TernHub::setGeoJSON(bool geoJSON) { write(&Fields::geoJSON, geoJSON); }
bool TernHub::isMultiActiveVenues() const { return read(&Fields::isMultiActiveVenues); }
void TernHub::setIsMultiActiveVenues(bool isMultiActiveVenues) {
  write(&Fields::isMultiActiveVenues, isMultiActiveVenues);
}
std::shared_ptr<TernHubDelegate> TernHub::delegate() const {
  return read(&Fields::delegate).lock();
}
void TernHub::setDelegate(std::weak_ptr<TernHubDelegate> delegate) {
  write(&Fields::delegate, std::move(delegate));
}
std::shared_ptr<TernMultiActiveVenuesDelegate> TernHub::multiVenueDelegate() const {
  return read(&Fields::multiVenueDelegate).lock();
}
void TernHub::setMultiVenueDelegate(std::weak_ptr<TernMultiActiveVenuesDelegate> delegate) {
  write(&Fields::multiVenueDelegate, std::move(delegate));
}
Value TernHub::name() const { return read(&Fields::name); }
Value TernHub::id() const { return read(&Fields::id); }
void TernHub::setId(Value id) { write(&Fields::id, std::move(id)); }
std::string TernHub::locale() const { return read(&Fields::locale); }
void TernHub::setLocale(std::string locale) { write(&Fields::locale, std::move(locale)); }
std::shared_ptr<TernVenueCollection> TernHub::venues() const { return read(&Fields::venues); }
void TernHub::setVenues(std::shared_ptr<TernVenueCollection> venues) {
  write(&Fields::venues, std::move(venues));
}
std::shared_ptr<TernLocaleCollection> TernHub::locales() const { return read(&Fields::locales); }
void TernHub::setLocales(std::shared_ptr<TernLocaleCollection> locales) {
  write(&Fields::locales, std::move(locales));
}
std::shared_ptr<TernActiveVenue> TernHub::activeVenue() const { return read(&Fields::activeVenue); }
void TernHub::setActiveVenue(std::shared_ptr<TernActiveVenue> venue) {
  write(&Fields::activeVenue, std::move(venue));
}
std::shared_ptr<VenueDestinationCollection> TernHub::venueDestinations() const {
  return read(&Fields::venueDestinations);
}
void TernHub::setVenueDestinations(std::shared_ptr<VenueDestinationCollection> destinations) {
  write(&Fields::venueDestinations, std::move(destinations));
}
std::shared_ptr<TernMultiActiveVenues> TernHub::multiActiveVenues() const {
  return read(&Fields::multiActiveVenues);
}
void TernHub::setMultiActiveVenues(std::shared_ptr<TernMultiActiveVenues> venues) {
  write(&Fields::multiActiveVenues, std::move(venues));
}
Value TernHub::venuesDictionary() const { return read(&Fields::venuesDictionary); }
void TernHub::setVenuesDictionary(Value dictionary) {
  write(&Fields::venuesDictionary, std::move(dictionary));
}
Value TernHub::localeDictionary() const { return read(&Fields::localeDictionary); }
void TernHub::setLocaleDictionary(Value dictionary) {
  write(&Fields::localeDictionary, std::move(dictionary));
}
std::shared_ptr<HTTPClient> TernHub::client() const {
  const MutexLock lock(mutex_);
  if (fields_->client == nullptr) {
    fields_->client = HTTPClient::initWithHostURL(fields_->hostURL);
  }
  return fields_->client;
}
void TernHub::setClient(std::shared_ptr<HTTPClient> client) {
  write(&Fields::client, std::move(client));
}
Value TernHub::temporaryCache() const { return read(&Fields::temporaryCache); }
void TernHub::setTemporaryCache(Value answer) { write(&Fields::temporaryCache, std::move(answer)); }
std::shared_ptr<TernFileCaching> TernHub::cache() const { return read(&Fields::cache); }
void TernHub::setCache(std::shared_ptr<TernFileCaching> cache) {
  write(&Fields::cache, std::move(cache));
}
std::shared_ptr<OAuthConnector> TernHub::auth() const { return read(&Fields::auth); }
void TernHub::setAuth(std::shared_ptr<OAuthConnector> auth) {
  write(&Fields::auth, std::move(auth));
}

}  // namespace tern
