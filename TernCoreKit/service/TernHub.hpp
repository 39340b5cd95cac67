// The way into the library: loads a customer's venues from the mapping service, keeps every answer
// on disk, and goes on with those when the service cannot be reached.
//
// A load asks the service with the stamp of the cached answer and takes the cached one on 304, on
// 500 and without any answer. One that finds neither builds an empty model and reports no error;
// only locales and map templates report one. What it does is announced by notifications
// (platform/Notifications.hpp) named
//   "TERN_CORE_SERVER_REQUEST_START"    {"endpoint"}
//   "TERN_CORE_SERVER_REQUEST_FAILED"   {"endpoint", "error": {"code", "description", "message"}}
//   "TERN_CORE_SERVER_REQUEST_SUCCESS"  {"endpoint"}
//
// Ownership: held by std::shared_ptr. A load under way keeps its hub; the delegate is not kept.
// Threads: operations may be called from any, but one load must have completed before the next
//   begins: the records of an active venue are changed by the load of a building. Getters and
//   setters may be called at any time. Completions, notifications and the delegate run on a thread
//   of the HTTP transport, or on the caller's before the call returns when no request was needed; a
//   graph is built on the background queue, and the delegate told there.
// Fails: through the completions. A hub without all credentials has no token connector, and a load
//   that needs a token then never completes.
//
//   const auto hub = TernHub::initCustomerWithDictionary(Value::map(
//       {{"customerId", 42}, {"host", host}, {"clientId", id}, {"clientSecret", secret}}));
//   hub->setDelegate(listener);  // wayfindDataLoaded(): routes can be asked for
//   hub->populateVenueWithDefaultBuildingByVenueId(7, [](auto venue, auto error) { ... });
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/service/HTTPClient.hpp"
#include "TernCoreKit/service/OAuthConnector.hpp"
#include "TernCoreKit/service/TernFileCaching.hpp"

namespace tern {

class TernLocaleCollection;
class TernMultiActiveVenues;
class TernMultiActiveVenuesDelegate;
class TernVenueCollection;
class VenueDestinationCollection;
struct TernActiveVenue;
struct TernLocale;
struct TernVenue;

class TERN_API TernHubDelegate {
 public:
  virtual ~TernHubDelegate() = default;

  // The graph of the active venue has been built. Called on the background queue.
  virtual void wayfindDataLoaded() {}
};

class TERN_API TernHub : public std::enable_shared_from_this<TernHub> {
 public:
  using Completion = std::function<void(std::optional<TernError> error)>;
  using VenuesCompletion = std::function<void(std::vector<std::shared_ptr<TernVenue>> venues,
                                              std::optional<TernError> error)>;
  using LocalesCompletion = std::function<void(std::vector<std::shared_ptr<TernLocale>> locales,
                                               std::optional<TernError> error)>;
  using VenueCompletion =
      std::function<void(std::shared_ptr<TernActiveVenue> venue, std::optional<TernError> error)>;
  using MultiVenueCompletion = std::function<void(std::shared_ptr<TernMultiActiveVenues> venues,
                                                  std::optional<TernError> error)>;
  using DestinationsCompletion = std::function<void(
      std::shared_ptr<VenueDestinationCollection> destinations, std::optional<TernError> error)>;
  // The answer is a map, absent with an error.
  using AnswerCompletion = std::function<void(Value answer, std::optional<TernError> error)>;
  // A text or a number, absent when there is none.
  using StampCompletion = std::function<void(std::optional<TernError> error, Value stamp)>;

  // Options: "customerId", "host", "clientId", "clientSecret", "locale" ("en-US"), "geoJSON"
  // (false), "autoReloadCache" (true).
  static std::shared_ptr<TernHub> initCustomerWithDictionary(const Value& options);
  static std::shared_ptr<TernHub> initWithCustomerId(std::int64_t customerId, bool autoReloadCache,
                                                     std::string host, std::string_view clientId,
                                                     std::string_view clientSecret);
  ~TernHub();
  TernHub(const TernHub&) = delete;
  TernHub& operator=(const TernHub&) = delete;

  static std::string_view getSDKVersion() { return "5.12.2"; }
  static std::string_view getServerVersion() { return "4.12"; }

  // Loads. `populateCoreWithExternalIds` and `populateLocales` on a hub without a host or a
  // customer report that at once, go on all the same and report again at their end; so do the
  // operations that run them.

  // Ids joined by ","; none for every venue.
  void populateCoreWithExternalIds(std::string_view externalIds, Completion completion);
  // From memory when there are any.
  void getVenues(VenuesCompletion completion);
  void getVenuesWithExternalIds(const std::vector<std::string>& externalIds,
                                VenuesCompletion completion);
  // From memory when they have been loaded.
  void getLocales(LocalesCompletion completion);
  void populateLocales(Completion completion);

  // Loads a venue without its buildings. It comes with an error when only its map template failed.
  void populateVenue(const std::shared_ptr<TernVenue>& venue, VenueCompletion completion);
  void populateVenueByVenueId(std::int64_t venueId, VenueCompletion completion);
  void populateVenueWithDefaultBuildingByVenueId(std::int64_t venueId, VenueCompletion completion);
  void populateVenueWithBuildingByVenueId(std::int64_t venueId, std::int64_t buildingId,
                                          VenueCompletion completion);
  // Adds a building to a venue that has been loaded and starts to build the graph; the completion
  // does not wait for that. A graph that is being built is waited for before the venue is changed.
  void populateBuildingInVenue(const std::shared_ptr<TernActiveVenue>& venue,
                               std::int64_t buildingId, VenueCompletion completion);
  // The active venue's; it is handed on with an error too.
  void populateMapTemplatesWithCompletionHandler(VenueCompletion completion);
  // Loads venues one after another and joins them, or adds them to those that are joined. A venue
  // that fails is reported and left out; the completion comes again at the end. Between the first
  // failure and the end the graphs of single venues are built too.
  void populateVenuesWithDefaultBuilding(std::vector<std::int64_t> venueIds,
                                         MultiVenueCompletion completion);
  // Never cached, and always asked of the default service host.
  void populateDestinationsForVenues(const std::vector<std::int64_t>& venueIds,
                                     DestinationsCompletion completion);
  // Any path below the customer's, a text that begins with "/". Never cached.
  void getRequest(const Value& path, AnswerCompletion completion);

  // Forgets the active venue, and ends caching for good: nothing is found or saved from here on.
  void destroyActiveVenue();

  // Paths of the service, which are the keys of the cache too.
  std::string customerFullCallAPI() const;
  std::string customerFullCallAPIWithExternalVenueIds(std::string_view externalIds) const;
  std::string localesAPI() const;
  std::string venueComponenentsAPIWithVenueID(std::int64_t venueId) const;
  std::string buildingAPIWithVenue(const TernActiveVenue& venue, std::int64_t buildingId) const;
  std::string destinationsComponenentsAPIWithVenueIDs(std::string_view venueIds) const;

  // The cache, as the loads use it.

  // Reads the cached answer. One that has a stamp becomes `temporaryCache`.
  void checkCachingWithEndPoint(std::string_view endPoint, const StampCompletion& completion);
  // May report twice: an old answer that could not be removed does not keep the new one from being
  // saved.
  void saveData(const Value& data, const Value& cacheFilePath, const Completion& completion) const;
  // Takes the answer out; an empty map when there is none.
  Value returnTemporaryCache();
  void clearTemporaryCache();
  // Keeps the venues that are loaded, else builds them of `temporaryCache`.
  void validateExistingCoreForCacheWithEndpoint(std::string_view endpoint,
                                                const Completion& completion);
  // Wipes the documents folder.
  void clearAllCache() const;
  // The venue's own answer only.
  void clearCacheByVenueId(std::int64_t venueId) const;

  // Post a notification, when the endpoint is not empty. The data, a map or absent, is added.
  static void startServerPluginResponseForApi(std::string_view endpoint, const Value& data = {});
  static void failedServerPluginResponseForApi(std::string_view endpoint,
                                               const std::optional<TernError>& error,
                                               const Value& data = {});
  static void successfulServerPluginsResponseForApi(std::string_view endpoint,
                                                    const Value& values = {});

  // Takes a customer's document: each key that names a plain field of the hub, and the venues.
  void initWithDictionary(Value answer);
  // Keys of a document that name no field mean nothing.
  void setValue(const Value& /*value*/, std::string_view /*undefinedKey*/) {}
  // A copy of the map in which each element of "items" has the value under the key.
  static Value addToItemDictionary(const Value& dictionary, std::string_view key,
                                   const Value& value);

  std::string hostURL() const;
  void setHostURL(std::string hostURL);
  // A number; absent without one.
  Value customer() const;
  void setCustomer(Value customer);
  // False: a cached answer is used without asking the service.
  bool autoCache() const;
  void setAutoCache(bool autoCache);
  bool geoJSON() const;
  void setGeoJSON(bool geoJSON);
  // Whether a load of several venues is under way.
  bool isMultiActiveVenues() const;
  // Null when there is none any more.
  std::shared_ptr<TernHubDelegate> delegate() const;
  void setDelegate(std::weak_ptr<TernHubDelegate> delegate);
  // Told when venues have been joined. REQUIRES: it is set before they are loaded.
  void setMultiVenueDelegate(std::weak_ptr<TernMultiActiveVenuesDelegate> delegate);
  // As the customer's document states them; absent before it is loaded.
  Value name() const;
  Value id() const;
  std::string locale() const;
  void setLocale(std::string locale);
  // Null until they are loaded.
  std::shared_ptr<TernVenueCollection> venues() const;
  std::shared_ptr<TernLocaleCollection> locales() const;
  std::shared_ptr<TernActiveVenue> activeVenue() const;
  std::shared_ptr<VenueDestinationCollection> venueDestinations() const;
  std::shared_ptr<TernMultiActiveVenues> multiActiveVenues() const;
  // The application's own; the hub fills neither.
  Value venuesDictionary() const;
  void setVenuesDictionary(Value dictionary);
  Value localeDictionary() const;
  void setLocaleDictionary(Value dictionary);
  // Made with `hostURL` when it is first asked for.
  std::shared_ptr<HTTPClient> client() const;
  // The cached answer of the endpoint that is being loaded; absent without one.
  Value temporaryCache() const;
  // Null after `destroyActiveVenue`.
  std::shared_ptr<TernFileCaching> cache() const;
  // Null without all credentials.
  std::shared_ptr<OAuthConnector> auth() const;

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
  void setCredentials(std::string_view clientId, std::string_view clientSecret);
  bool lacksCustomer() const;
  void takeCore(Value answer, std::string_view endpoint);
  void takeCachedCore(Value answer, std::string_view endpoint);
  void takeVenue(Value answer, std::string_view endpoint, const VenueCompletion& completion);
  void takeBuilding(const std::shared_ptr<TernActiveVenue>& venue, std::int64_t buildingId,
                    Value answer);
  void takeDestinations(Value answer);
  void joinVenues(const std::vector<std::shared_ptr<TernActiveVenue>>& venues);
  void loadMapTemplate(std::shared_ptr<TernActiveVenue> venue, VenueCompletion completion);
  void loadVenueWithBuilding(std::int64_t venueId, ChooseBuilding choose,
                             VenueCompletion completion);

  mutable std::mutex mutex_;
  const std::unique_ptr<Fields> fields_;  // what it holds is guarded by mutex_
};

}  // namespace tern
