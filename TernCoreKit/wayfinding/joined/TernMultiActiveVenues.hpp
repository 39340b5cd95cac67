#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::inline v5 {

class TernASGrid;
struct TernActiveVenue;
struct TernWaypoint;

/// Hears when joined venues can be routed in.
///
/// Ownership: the application's; it is held weakly.
/// Threads: called on the background queue.
/// Fails: never.
class TERN_API TernMultiActiveVenuesDelegate {
 public:
  virtual ~TernMultiActiveVenuesDelegate() = default;

  /// The joined graph has been built. Called on the background queue, after each rebuild.
  virtual void multiVenueWayfindDataLoaded() {}
  /// It could not be built for want of memory; what there was before is still asked. Called on the
  /// background queue, or where the rebuild was asked for.
  virtual void multiVenueWayfindDataFailed() {}
};

/// Several loaded venues that are joined by their exits, and routes across them.
///
/// An exit is a waypoint whose external id names the waypoint that it joins in another venue:
/// "12:3456" is waypoint 3456 of venue 12. One graph is built over all venues, with a link from
/// each exit to its counterpart; for both directions, both exits name each other. In that graph
/// coordinates are longitude and latitude, and costs are measured in metres of the spherical
/// Mercator projection. Ids of waypoints, maps and path types must be unique among the venues: of
/// several the first is found.
///
/// The venue list and the connection table are those of the process: every object reads and changes
/// the same. They and the graph are replaced as a whole by each rebuild, so that a request during
/// one sees the old ones or the new.
///
/// Ownership: held by std::shared_ptr. Shares the venues; the delegate is not kept. A rebuild that
/// is under way keeps the object alive.
/// Threads: any, at any time, also while a hub adds buildings to the venues. A rebuild runs on the
/// background queue, holds each venue's `recordsMutex` while it lists the records, and tells the
/// delegate there.
/// Fails: never; see `wayfind`.
///
///     auto venues = TernMultiActiveVenues::initWithActiveVenues({mall, station}, listener);
///     // When multiVenueWayfindDataLoaded() has been called:
///     draw(venues->wayfind(shop, gate, 100));
class TERN_API TernMultiActiveVenues : public std::enable_shared_from_this<TernMultiActiveVenues> {
 public:
  /// Venues, none of them null in an answer.
  using Venues = std::vector<std::shared_ptr<TernActiveVenue>>;
  /// Waypoints of any of the venues.
  using Waypoints = std::vector<std::shared_ptr<TernWaypoint>>;
  /// Who hears of rebuilds.
  using Delegate = TernMultiActiveVenuesDelegate;
  /// By a venue's id as decimal text: the ids of the venues that it reaches. The values mean
  /// nothing.
  using Connections = std::map<std::string, std::map<std::string, std::string>>;

  /// These become the venues of the process; null ones are passed over, here and below. Starts the
  /// first rebuild.
  static std::shared_ptr<TernMultiActiveVenues> initWithActiveVenues(
      const Venues& venues, std::weak_ptr<Delegate> delegate = {});
  TernMultiActiveVenues(const TernMultiActiveVenues&) = delete;
  TernMultiActiveVenues& operator=(const TernMultiActiveVenues&) = delete;

  /// Who hears of rebuilds; null when there is none any more.
  std::shared_ptr<Delegate> delegate() const;
  /// From here on this one hears of rebuilds; nobody when it is empty.
  void setDelegate(std::weak_ptr<Delegate> delegate);
  /// The venues of the process.
  Venues activeVenues() const;
  /// Which venue reaches which; empty before the first rebuild.
  Connections venueConnections() const;
  /// The joined graph; null before the first rebuild.
  std::shared_ptr<TernASGrid> globalASGrid() const;
  /// The venues that this object was given, by their ids.
  std::map<std::int64_t, std::shared_ptr<TernActiveVenue>> dictOfActiveVenues() const;

  /// Adds the venues whose ids are not there yet, and starts a rebuild, whether it changes anything
  /// or not.
  void updateActiveVenues(const Venues& venues);
  /// Takes these venues out, and starts a rebuild, whether it changes anything or not.
  void destroyActiveVenue(const Venues& venues);
  /// Takes all venues of the process out, and starts a rebuild.
  void destroyAllActiveVenues();

  /// A step of the above: adds the venues to `dictOfActiveVenues`, in place of those of the same
  /// ids.
  void createDictForActiveVenues(const Venues& venues);
  /// Rebuilds on the background queue. The completion, which may be empty, is called once, with
  /// true, on the queue's thread, while the graph that has been replaced is still locked; not at
  /// all when the process ends before.
  void updateMultiVenueWayfindDataWithCompletion(std::function<void(bool)> completion);
  /// Builds a new table and a new graph of the venues as they are now, before it returns.
  void loadGridData();
  /// Builds a new table only.
  void groupConnectedVenues();

  /// The cheapest route over links of at most that accessibility level; empty when there is none,
  /// when the venues are not connected in this direction, and, with a log line, before the first
  /// rebuild. No distance is converted to millimetres.
  TernRoute wayfind(const std::shared_ptr<TernWaypoint>& from,
                    const std::shared_ptr<TernWaypoint>& to, std::int64_t accessibility) const;

  /// The waypoints of these venues whose external id is "Exit".
  Waypoints getExitWayPoints(const std::vector<std::int64_t>& venueIds) const;
  /// The venue's waypoints whose external id holds a colon.
  static Waypoints getAllConnectedWaypoints(const std::shared_ptr<TernActiveVenue>& venue);
  /// The venue of that id in `dictOfActiveVenues`; null without one.
  std::shared_ptr<TernActiveVenue> getVenueById(std::int64_t id) const;
  /// The first venue of the process that holds the map; null without one.
  std::shared_ptr<TernActiveVenue> getVenueByMapId(std::int64_t mapId) const;
  /// The venues of the process of that name.
  Venues getVenueByName(std::string_view name) const;

 private:
  struct Shared;

  TernMultiActiveVenues() = default;
  static Shared& shared();
  static Mutex& mutex();
  void rebuild(const std::function<void(bool)>& completion);
  void rebuildAndTellDelegate();

  std::weak_ptr<Delegate> delegate_ TERN_GUARDED_BY(mutex());
  std::shared_ptr<TernASGrid> globalASGrid_ TERN_GUARDED_BY(mutex());
  std::map<std::int64_t, std::shared_ptr<TernActiveVenue>> dictOfActiveVenues_
      TERN_GUARDED_BY(mutex());
};

}  // namespace tern
