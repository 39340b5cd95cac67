#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"

#include <algorithm>
#include <mutex>
#include <set>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/platform/WorkQueue.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/platform/detail/common/Immortal.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "TernCoreKit/wayfinding/VenueGrid.hpp"
#include "TernCoreKit/wayfinding/detail/ExitLink.hpp"
#include "TernCoreKit/wayfinding/joined/detail/VenueGroups.hpp"

namespace tern::inline v5 {

// What all objects of the process have in common.
struct TernMultiActiveVenues::Shared {
  // Held while a table and a graph are built, so that those of an older list never replace those of
  // a newer one. Taken before each other mutex here.
  Mutex building;
  Mutex fields;
  Venues activeVenues TERN_GUARDED_BY(mutex());
  Connections connections TERN_GUARDED_BY(mutex());
};

namespace {

using Venues = TernMultiActiveVenues::Venues;
using VenuesById = std::map<std::int64_t, std::shared_ptr<TernActiveVenue>>;

// The records of all venues at once, so that table and graph are of one moment.
class RecordsLock {
 public:
  explicit RecordsLock(const Venues& venues) {
    std::set<TernActiveVenue*> distinct;
    for (const auto& venue : venues) distinct.insert(venue.get());
    for (TernActiveVenue* venue : distinct) locks_.emplace_back(venue->recordsMutex());
  }

 private:
  std::vector<std::unique_lock<Mutex>> locks_;
};

template <class Visit>
void forEachWaypoint(const TernActiveVenue& venue, Visit visit) {
  if (venue.maps == nullptr) return;
  for (const TernMap& map : venue.maps->each()) {
    if (!map.waypoints) continue;
    for (const TernWaypoint& waypoint : map.waypoints->each()) visit(waypoint);
  }
}

TernMultiActiveVenues::Connections connectionsOf(const Venues& venues, const VenuesById& known) {
  std::vector<detail::VenueExits> exits;
  for (const auto& venue : venues) {
    detail::VenueExits& own = exits.emplace_back();
    own.venueId = venue->id.integer();
    forEachWaypoint(*venue, [&](const TernWaypoint& waypoint) {
      const auto link = detail::exitLinkOf(waypoint);
      if (link && known.contains(link->venueId)) own.leadTo.push_back(link->venueId);
    });
  }
  return detail::groupVenues(exits);
}

// 0 of a venue that is not there.
std::int64_t idOf(const std::shared_ptr<TernActiveVenue>& venue) {
  return venue != nullptr ? venue->id.integer() : 0;
}

}  // namespace

TernMultiActiveVenues::Shared& TernMultiActiveVenues::shared() {
  // Never destroyed: a rebuild may still run while the process ends.
  static detail::Immortal<Shared> shared;
  return shared.value;
}

Mutex& TernMultiActiveVenues::mutex() { return shared().fields; }

std::shared_ptr<TernMultiActiveVenues> TernMultiActiveVenues::initWithActiveVenues(
    const Venues& venues, std::weak_ptr<Delegate> delegate) {
  const std::shared_ptr<TernMultiActiveVenues> made(new TernMultiActiveVenues);
  made->setDelegate(std::move(delegate));
  Venues list = venues;
  std::erase(list, nullptr);
  made->createDictForActiveVenues(list);
  {
    const MutexLock lock(mutex());
    shared().activeVenues.swap(list);
  }
  made->rebuildAndTellDelegate();
  return made;
}

std::shared_ptr<TernMultiActiveVenues::Delegate> TernMultiActiveVenues::delegate() const {
  const MutexLock lock(mutex());
  return delegate_.lock();
}

void TernMultiActiveVenues::setDelegate(std::weak_ptr<Delegate> delegate) {
  const MutexLock lock(mutex());
  delegate_.swap(delegate);
}

Venues TernMultiActiveVenues::activeVenues() const {
  const MutexLock lock(mutex());
  return shared().activeVenues;
}

TernMultiActiveVenues::Connections TernMultiActiveVenues::venueConnections() const {
  const MutexLock lock(mutex());
  return shared().connections;
}

std::shared_ptr<TernASGrid> TernMultiActiveVenues::globalASGrid() const {
  const MutexLock lock(mutex());
  return globalASGrid_;
}

VenuesById TernMultiActiveVenues::dictOfActiveVenues() const {
  const MutexLock lock(mutex());
  return dictOfActiveVenues_;
}

void TernMultiActiveVenues::createDictForActiveVenues(const Venues& venues) {
  VenuesById dict = dictOfActiveVenues();
  for (const auto& venue : venues) {
    if (venue != nullptr) dict[venue->id.integer()] = venue;
  }
  const MutexLock lock(mutex());
  dictOfActiveVenues_.swap(dict);
}

void TernMultiActiveVenues::updateActiveVenues(const Venues& venues) {
  {
    const MutexLock lock(mutex());
    for (const auto& venue : venues) {
      if (venue == nullptr) continue;
      const bool isNew = dictOfActiveVenues_.try_emplace(venue->id.integer(), venue).second;
      if (isNew) shared().activeVenues.push_back(venue);
    }
  }
  rebuildAndTellDelegate();
}

void TernMultiActiveVenues::destroyActiveVenue(const Venues& venues) {
  // The venues outlive the lock: the caller has them.
  {
    const MutexLock lock(mutex());
    for (const auto& venue : venues) {
      if (venue == nullptr) continue;
      std::erase(shared().activeVenues, venue);
      dictOfActiveVenues_.erase(venue->id.integer());
    }
  }
  rebuildAndTellDelegate();
}

void TernMultiActiveVenues::destroyAllActiveVenues() { destroyActiveVenue(activeVenues()); }

void TernMultiActiveVenues::updateMultiVenueWayfindDataWithCompletion(
    std::function<void(bool)> completion) {
  const auto begin = [&](const auto& kept) {
    backgroundQueue()->run([self = shared_from_this(), kept] { self->rebuild(kept.get()); });
  };
  detail::attemptWith(std::move(completion), begin, [](const auto& ended) {
    if (ended) ended(false);
  });
}

void TernMultiActiveVenues::rebuildAndTellDelegate() {
  // The rebuild keeps this object.
  updateMultiVenueWayfindDataWithCompletion([this](bool isBuilt) {
    const auto listener = delegate();
    if (listener == nullptr) return;
    isBuilt ? listener->multiVenueWayfindDataLoaded() : listener->multiVenueWayfindDataFailed();
  });
}

void TernMultiActiveVenues::rebuild(const std::function<void(bool)>& completion) {
  const auto replaced = globalASGrid();
  std::unique_lock<std::recursive_mutex> lock;
  if (replaced != nullptr) lock = std::unique_lock(replaced->mutex());
  const bool isBuilt = detail::attempt([this] { loadGridData(); });
  if (completion) completion(isBuilt);
}

void TernMultiActiveVenues::loadGridData() {
  const MutexLock building(shared().building);
  const Venues venues = activeVenues();
  const VenuesById known = dictOfActiveVenues();
  std::vector<const TernVenueData*> data;
  for (const auto& venue : venues) data.push_back(venue.get());
  Connections connections;
  VenueGridLists lists;
  {
    const RecordsLock records(venues);
    connections = connectionsOf(venues, known);
    lists = listRecords(data);
  }
  auto grid = makeGrid(std::move(lists), true);
  // What is replaced goes away outside the lock.
  const MutexLock lock(mutex());
  shared().connections.swap(connections);
  globalASGrid_.swap(grid);
}

void TernMultiActiveVenues::groupConnectedVenues() {
  const MutexLock building(shared().building);
  const Venues venues = activeVenues();
  const VenuesById known = dictOfActiveVenues();
  const RecordsLock records(venues);
  Connections connections = connectionsOf(venues, known);
  const MutexLock lock(mutex());
  shared().connections.swap(connections);
}

TernRoute TernMultiActiveVenues::wayfind(const std::shared_ptr<TernWaypoint>& from,
                                         const std::shared_ptr<TernWaypoint>& to,
                                         std::int64_t accessibility) const {
  if (from == nullptr || to == nullptr) return {};
  const std::int64_t start = idOf(getVenueByMapId(from->mapId.integer()));
  const std::int64_t end = idOf(getVenueByMapId(to->mapId.integer()));
  TernASSearch search;
  bool isConnected = start == end;
  {
    const MutexLock lock(mutex());
    search.grid = globalASGrid_;
    const auto reached = shared().connections.find(std::to_string(start));
    isConnected = isConnected || (reached != shared().connections.end() &&
                                  reached->second.contains(std::to_string(end)));
  }
  if (search.grid == nullptr) {
    logSdk(
        "Grid has not been initialized, please wait for multiVenueWayfindDataLoaded callback "
        "before wayfinding.");
  }
  if (!isConnected) return {};
  return search.route(from->id.integer(), to->id.integer(), accessibility).value_or(TernRoute());
}

TernMultiActiveVenues::Waypoints TernMultiActiveVenues::getExitWayPoints(
    const std::vector<std::int64_t>& venueIds) const {
  Waypoints exits;
  for (const std::int64_t id : venueIds) {
    const auto venue = getVenueById(id);
    if (venue == nullptr || venue->maps == nullptr) continue;
    for (const auto& map : venue->maps->getAll()) {
      if (!map->waypoints) continue;
      const Waypoints found = map->waypoints->getByExternalId("Exit");
      exits.insert(exits.end(), found.begin(), found.end());
    }
  }
  return exits;
}

TernMultiActiveVenues::Waypoints TernMultiActiveVenues::getAllConnectedWaypoints(
    const std::shared_ptr<TernActiveVenue>& venue) {
  if (venue == nullptr || venue->maps == nullptr) return {};
  Waypoints connected = venue->maps->getAllWaypoints();
  std::erase_if(connected, [](const auto& waypoint) { return !detail::exitLinkOf(*waypoint); });
  return connected;
}

std::shared_ptr<TernActiveVenue> TernMultiActiveVenues::getVenueById(std::int64_t id) const {
  const MutexLock lock(mutex());
  const auto found = dictOfActiveVenues_.find(id);
  return found != dictOfActiveVenues_.end() ? found->second : nullptr;
}

std::shared_ptr<TernActiveVenue> TernMultiActiveVenues::getVenueByMapId(std::int64_t mapId) const {
  for (auto& venue : activeVenues()) {
    if (venue->maps != nullptr && venue->maps->getById(mapId) != nullptr) return venue;
  }
  return nullptr;
}

Venues TernMultiActiveVenues::getVenueByName(std::string_view name) const {
  Venues named = activeVenues();
  std::erase_if(named, [&](const auto& venue) {
    return !venue->name.isText() || venue->name.text() != name;
  });
  return named;
}

}  // namespace tern
