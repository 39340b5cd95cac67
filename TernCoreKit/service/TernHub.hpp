#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/service/HTTPClient.hpp"
#include "TernCoreKit/service/OAuthConnector.hpp"
#include "TernCoreKit/service/TernFileCaching.hpp"

namespace tern::inline v5 {

class TernLocaleCollection;
class TernMultiActiveVenues;
class TernMultiActiveVenuesDelegate;
class TernVenueCollection;
class VenueDestinationCollection;
struct TernActiveVenue;
struct TernLocale;
struct TernVenue;

/// Told when routes can be asked for. Ownership: the application's; a hub holds it weakly.
/// Threads: see its functions. Fails: never.
class TERN_API TernHubDelegate {
 public:
  virtual ~TernHubDelegate() = default;

  /// The graph of the active venue has been built. Called on the background queue.
  virtual void wayfindDataLoaded() {}
  /// It could not be built for want of memory; what there was before is still asked. Called on the
  /// background queue, or where the building was loaded.
  virtual void wayfindDataFailed() {}
};

/// The way into the library: loads a customer's venues from the mapping service, keeps every answer
/// on disk, and goes on with those when the service cannot be reached.
///
/// A load asks the service with the stamp of the cached answer and takes the cached one on 304, on
/// 500 and without any answer. One that finds neither builds an empty model and reports no error;
/// only locales and map templates report one. What it does is announced by notifications
/// (platform/Notifications.hpp) named
///
///     "TERN_CORE_SERVER_REQUEST_START"    {"endpoint"}
///     "TERN_CORE_SERVER_REQUEST_FAILED"   {"endpoint", "error": {"code", "description",
///     "message"}} "TERN_CORE_SERVER_REQUEST_SUCCESS"  {"endpoint"}
///
/// Ownership: held by std::shared_ptr. A load under way keeps its hub; the delegate is not kept.
/// Threads: operations may be called from any, but one load must have completed before the next
/// begins: the records of an active venue are changed by the load of a building. Getters and
/// setters may be called at any time. Completions, notifications and the delegate run on a thread
/// of the HTTP transport, or on the caller's before the call returns when no request was needed;
/// loads of several venues or buildings complete on the background queue, and there a graph is
/// built and the delegate told. REQUIRES: none of them throws.
/// Fails: through the completions. A hub without all credentials has no token connector, and a load
/// that needs a token then never completes.
///
///     const auto hub = TernHub::initCustomerWithDictionary(Value::map(
///         {{"customerId", 42}, {"host", host}, {"clientId", id}, {"clientSecret", secret}}));
///     hub->setDelegate(listener);  // wayfindDataLoaded(): routes can be asked for
///     hub->populateVenueWithDefaultBuildingByVenueId(7, [](auto venue, auto error) { ... });
class TERN_API TernHub : public std::enable_shared_from_this<TernHub> {
 public:
  /// Absent: it succeeded.
  using Completion = std::function<void(std::optional<TernError> error)>;
  /// Copies of the records; empty with an error.
  using VenuesCompletion = std::function<void(std::vector<std::shared_ptr<TernVenue>> venues,
                                              std::optional<TernError> error)>;
  /// Copies of the records; empty with an error.
  using LocalesCompletion = std::function<void(std::vector<std::shared_ptr<TernLocale>> locales,
                                               std::optional<TernError> error)>;
  /// The venue is null with an error, unless the operation says otherwise.
  using VenueCompletion =
      std::function<void(std::shared_ptr<TernActiveVenue> venue, std::optional<TernError> error)>;
  /// The joined venues are null with an error.
  using MultiVenueCompletion = std::function<void(std::shared_ptr<TernMultiActiveVenues> venues,
                                                  std::optional<TernError> error)>;
  /// The destinations are null with an error.
  using DestinationsCompletion = std::function<void(
      std::shared_ptr<VenueDestinationCollection> destinations, std::optional<TernError> error)>;
  /// The answer is a map, absent with an error.
  using AnswerCompletion = std::function<void(Value answer, std::optional<TernError> error)>;
  /// A text or a number, absent when there is none.
  using StampCompletion = std::function<void(std::optional<TernError> error, Value stamp)>;

  /// Options: "customerId", "host", "clientId", "clientSecret", "locale" ("en-US"), "geoJSON"
  /// (false), "autoReloadCache" (true).
  static std::shared_ptr<TernHub> initCustomerWithDictionary(const Value& options);
  /// The same options as single values.
  static std::shared_ptr<TernHub> initWithCustomerId(std::int64_t customerId, bool autoReloadCache,
                                                     std::string host, std::string_view clientId,
                                                     std::string_view clientSecret);
  ~TernHub();
  TernHub(const TernHub&) = delete;
  TernHub& operator=(const TernHub&) = delete;

  /// The version that names the cache folder.
  static std::string_view getSDKVersion() { return "5.12.2"; }
  /// The version of the service that is asked for.
  static std::string_view getServerVersion() { return "4.12"; }

  // Loads. `populateCoreWithExternalIds` and `populateLocales` on a hub without a host or a
  // customer report that at once, go on all the same and report again at their end; so do the
  // operations that run them.

  /// Ids joined by ","; none for every venue.
  void populateCoreWithExternalIds(std::string_view externalIds, Completion completion);
  /// From memory when there are any.
  void getVenues(VenuesCompletion completion);
  /// Always asks anew.
  void getVenuesWithExternalIds(const std::vector<std::string>& externalIds,
                                VenuesCompletion completion);
  /// From memory when they have been loaded.
  void getLocales(LocalesCompletion completion);
  /// Always asks anew.
  void populateLocales(Completion completion);

  /// Loads a venue without its buildings. It comes with an error when only its map template failed.
  void populateVenue(const std::shared_ptr<TernVenue>& venue, VenueCompletion completion);
  /// The same by the venue's id.
  void populateVenueByVenueId(std::int64_t venueId, VenueCompletion completion);
  /// Loads a venue and the building that it names as its default, as `populateBuildingInVenue`
  /// does.
  void populateVenueWithDefaultBuildingByVenueId(std::int64_t venueId, VenueCompletion completion);
  /// Loads a venue and a given building of it.
  void populateVenueWithBuildingByVenueId(std::int64_t venueId, std::int64_t buildingId,
                                          VenueCompletion completion);
  /// Adds a building to a venue that has been loaded and starts to build the graph; the completion
  /// does not wait for that. A graph that is being built is waited for before the venue is changed.
  void populateBuildingInVenue(const std::shared_ptr<TernActiveVenue>& venue,
                               std::int64_t buildingId, VenueCompletion completion);
  /// Adds several buildings to a venue that has been loaded, one after another in the given order,
  /// and then starts to build the graph once, when at least one came in; the delegate is told as
  /// ever. One that cannot be loaded is left out: the others are loaded all the same, and the first
  /// error comes with the venue at the end. No building at all is no error. The completion is
  /// called exactly once, on the background queue, or for a null venue, with TN006, before the call
  /// returns; it does not wait for the graph.
  void populateBuildingsInVenue(const std::shared_ptr<TernActiveVenue>& venue,
                                std::vector<std::int64_t> buildingIds, VenueCompletion completion);
  /// The active venue's; it is handed on with an error too.
  void populateMapTemplatesWithCompletionHandler(VenueCompletion completion);
  /// Loads venues one after another and joins them, or adds them to those that are joined. A venue
  /// that fails is reported and left out; the completion comes again at the end. Between the first
  /// failure and the end the graphs of single venues are built too.
  void populateVenuesWithDefaultBuilding(std::vector<std::int64_t> venueIds,
                                         MultiVenueCompletion completion);
  /// Never cached, and always asked of the default service host.
  void populateDestinationsForVenues(const std::vector<std::int64_t>& venueIds,
                                     DestinationsCompletion completion);
  /// Any path below the customer's, a text that begins with "/". Never cached.
  void getRequest(const Value& path, AnswerCompletion completion);

  /// Forgets the active venue, and ends caching for good: nothing is found or saved from here on.
  void destroyActiveVenue();

  // Paths of the service, which are the keys of the cache too.
  /// The customer's document.
  std::string customerFullCallAPI() const;
  /// The same with the venues of these ids only, joined by ",".
  std::string customerFullCallAPIWithExternalVenueIds(std::string_view externalIds) const;
  /// The locales.
  std::string localesAPI() const;
  /// A venue.
  std::string venueComponenentsAPIWithVenueID(std::int64_t venueId) const;
  /// A building of a venue.
  std::string buildingAPIWithVenue(const TernActiveVenue& venue, std::int64_t buildingId) const;
  /// The destinations of venues, whose ids are joined by ",".
  std::string destinationsComponenentsAPIWithVenueIDs(std::string_view venueIds) const;

  /// Any path below the customer's.
  std::string getRequest(std::string_view path) const;

  // What the loads make of an answer.

  /// Makes the data the active venue, and loads its map template where it names one. Data that are
  /// no map are announced as a failure and reported.
  void populateVenueWithData(Value data, std::string_view endPoint, std::int64_t venueId,
                             VenueCompletion completion);
  /// Adds the building to the venue and starts to build the graph, as `populateBuildingInVenue`
  /// does. Data that are no map are announced as a failure and reported.
  void populateBuildingWithData(Value data, std::string_view endPoint,
                                const std::shared_ptr<TernActiveVenue>& venue,
                                std::int64_t buildingId, VenueCompletion completion);
  /// Makes the answer's items `venueDestinations`, which an answer that is no map leaves as they
  /// are.
  void parsePopulateDestinationsForVenues(Value answer, const DestinationsCompletion& completion);

  // The cache, as the loads use it.

  /// Reads the cached answer. One that has a stamp becomes `temporaryCache`.
  void checkCachingWithEndPoint(std::string_view endPoint, const StampCompletion& completion);
  /// May report twice: an old answer that could not be removed does not keep the new one from being
  /// saved.
  void saveData(const Value& data, const Value& cacheFilePath, const Completion& completion) const;
  /// Takes the answer out; an empty map when there is none.
  Value returnTemporaryCache();
  /// Drops it.
  void clearTemporaryCache();
  /// Keeps the venues that are loaded, else builds them of `temporaryCache`.
  void validateExistingCoreForCacheWithEndpoint(std::string_view endpoint,
                                                const Completion& completion);
  /// Wipes the documents folder.
  void clearAllCache() const;
  /// The venue's own answer only.
  void clearCacheByVenueId(std::int64_t venueId) const;

  /// Post a notification, when the endpoint is not empty. The data, a map or absent, is added.
  static void startServerPluginResponseForApi(std::string_view endpoint, const Value& data = {});
  /// The same; nothing is posted without an error.
  static void failedServerPluginResponseForApi(std::string_view endpoint,
                                               const std::optional<TernError>& error,
                                               const Value& data = {});
  /// The same.
  static void successfulServerPluginsResponseForApi(std::string_view endpoint,
                                                    const Value& values = {});

  /// Takes a customer's document: each key that names a plain field of the hub, and the venues.
  void initWithDictionary(Value answer);
  /// Keys of a document that name no field mean nothing.
  void setValue(const Value& /*value*/, std::string_view /*undefinedKey*/) {}
  /// A copy of the map in which each element of "items" has the value under the key.
  static Value addToItemDictionary(const Value& dictionary, std::string_view key,
                                   const Value& value);

  /// Where requests go: scheme and host, with a port or base path where there is one.
  std::string hostURL() const;
  /// Counts for a `client` that has not been made yet.
  void setHostURL(std::string hostURL);
  /// The customer's number; absent without one.
  Value customer() const;
  /// Replaces it.
  void setCustomer(Value customer);
  /// False: a cached answer is used without asking the service.
  bool autoCache() const;
  /// Replaces it.
  void setAutoCache(bool autoCache);
  /// Whether the service is asked for GeoJSON.
  bool geoJSON() const;
  /// Replaces it.
  void setGeoJSON(bool geoJSON);
  /// Whether a load of several venues is under way.
  bool isMultiActiveVenues() const;
  /// True: the loads of buildings build no graph of a single venue.
  void setIsMultiActiveVenues(bool isMultiActiveVenues);
  /// Null when there is none any more.
  std::shared_ptr<TernHubDelegate> delegate() const;
  /// Replaces it; the hub does not keep it alive.
  void setDelegate(std::weak_ptr<TernHubDelegate> delegate);
  /// Null when there is none any more.
  std::shared_ptr<TernMultiActiveVenuesDelegate> multiVenueDelegate() const;
  /// Told when venues have been joined. REQUIRES: it is set before they are loaded.
  void setMultiVenueDelegate(std::weak_ptr<TernMultiActiveVenuesDelegate> delegate);
  /// As the customer's document states it; absent before that is loaded.
  Value name() const;
  /// The customer's id, as its document states it.
  Value id() const;
  /// Replaces it.
  void setId(Value id);
  /// The locale that documents are asked for in; "en-US" unless an option says otherwise.
  std::string locale() const;
  /// Replaces it.
  void setLocale(std::string locale);
  /// Null until they are loaded.
  std::shared_ptr<TernVenueCollection> venues() const;
  /// Replaces them; null for none.
  void setVenues(std::shared_ptr<TernVenueCollection> venues);
  /// Null until they are loaded.
  std::shared_ptr<TernLocaleCollection> locales() const;
  /// Replaces them; null for none.
  void setLocales(std::shared_ptr<TernLocaleCollection> locales);
  /// The venue that was loaded last; null from the start of a load on.
  std::shared_ptr<TernActiveVenue> activeVenue() const;
  /// Replaces it; null for none.
  void setActiveVenue(std::shared_ptr<TernActiveVenue> venue);
  /// Null until they are loaded.
  std::shared_ptr<VenueDestinationCollection> venueDestinations() const;
  /// Replaces them; null for none.
  void setVenueDestinations(std::shared_ptr<VenueDestinationCollection> destinations);
  /// Null until venues have been joined.
  std::shared_ptr<TernMultiActiveVenues> multiActiveVenues() const;
  /// Replaces them; null for none.
  void setMultiActiveVenues(std::shared_ptr<TernMultiActiveVenues> venues);
  /// The application's own; the hub fills it only of a document's key of that name.
  Value venuesDictionary() const;
  /// Replaces it.
  void setVenuesDictionary(Value dictionary);
  /// The application's own, too.
  Value localeDictionary() const;
  /// Replaces it.
  void setLocaleDictionary(Value dictionary);
  /// Made with `hostURL` when it is first asked for.
  std::shared_ptr<HTTPClient> client() const;
  /// Replaces it; null for one that is made anew.
  void setClient(std::shared_ptr<HTTPClient> client);
  /// The cached answer of the endpoint that is being loaded; absent without one.
  Value temporaryCache() const;
  /// Replaces it.
  void setTemporaryCache(Value answer);
  /// Null after `destroyActiveVenue`.
  std::shared_ptr<TernFileCaching> cache() const;
  /// Replaces it; null for none.
  void setCache(std::shared_ptr<TernFileCaching> cache);
  /// Null without all credentials.
  std::shared_ptr<OAuthConnector> auth() const;
  /// Replaces it; null for none.
  void setAuth(std::shared_ptr<OAuthConnector> auth);

 private:
  struct Fields;
  // The building of a venue to load, or why there is none.
  using ChooseBuilding =
      std::function<std::variant<std::int64_t, TernError>(const TernActiveVenue&)>;

  TernHub();
  template <class Part>
  Part read(Part Fields::*part) const;
  template <class Part>
  void write(Part Fields::*part, std::type_identity_t<Part> value);

  std::string customerPath() const;
  std::string query(std::string_view locale) const;
  void setCredentials(std::string_view clientId, std::string_view clientSecret)
      TERN_REQUIRES(mutex_);
  bool lacksCustomer() const;
  void takeCore(Value answer, std::string_view endpoint);
  void takeCachedCore(Value answer, std::string_view endpoint);
  // Adds a building; `taken` is called before its success is announced.
  void loadBuilding(const std::shared_ptr<TernActiveVenue>& venue, std::int64_t buildingId,
                    std::function<void()> taken, Completion completion);
  void takeBuilding(Value data, std::string_view endPoint,
                    const std::shared_ptr<TernActiveVenue>& venue, std::int64_t buildingId,
                    const std::function<void()>& taken);
  void finishBuildings(const std::shared_ptr<TernActiveVenue>& venue);
  void joinVenues(const std::vector<std::shared_ptr<TernActiveVenue>>& venues);
  void loadMapTemplate(std::shared_ptr<TernActiveVenue> venue, VenueCompletion completion);
  void loadVenueWithBuilding(std::int64_t venueId, ChooseBuilding choose,
                             VenueCompletion completion);

  mutable Mutex mutex_;
  const std::unique_ptr<Fields> fields_ TERN_PT_GUARDED_BY(mutex_);
};

}  // namespace tern
