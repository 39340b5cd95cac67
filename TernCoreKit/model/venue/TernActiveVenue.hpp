#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"
#include "TernCoreKit/wayfinding/TernASAlternativePath.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"
#include "TernCoreKit/wayfinding/TernRouting.hpp"

namespace tern::inline v5 {

class TernASGrid;
class TernMapLabelCollection;
class TernNearestElement;
struct TernDestination;
struct TernElement;
struct TernError;
struct TernMap;
struct TernWaypoint;

/// One loaded venue: the record of its document, the collections of what it holds and the
/// navigation graph over all its maps.
///
/// It is made from the venue's document, is given the maps of its buildings as they are loaded, and
/// builds its graph when asked to. From then on it answers routes; maps that come later are
/// searched after the next `updateWayfindDataWithCompletion`.
///
/// Ownership: held by std::shared_ptr; shares its records. A rebuild that is under way keeps the
/// venue alive, and its completion may release the last reference.
/// Threads: every operation here from any, at any time, also while a rebuild is under way and while
/// a hub adds a building. Whoever changes the records holds `recordsMutex` meanwhile; whoever reads
/// other than by these operations what a load changes (the buildings, and the waypoints of
/// destinations, amenities and path types) holds it too. Locks are taken in this order: that of the
/// graph which is replaced, that of the nearest-element search which is replaced, `recordsMutex`,
/// and last those of single fields, under which nothing else is locked.
/// Fails: never; see TernBaseModel for documents and each operation for its empty answer.
///
///     auto venue = TernActiveVenue::initWithDictionary(std::move(document));
///     addBuilding(*venue, buildingId, std::move(buildingDocument));  // VenueAssembly.hpp
///     attachWaypoints(*venue);
///     venue->updateWayfindDataWithCompletion([=](bool) { draw(venue->wayfind(from, to, 100)); });
struct TERN_API TernActiveVenue : TernVenueData,
                                  TernRouting,
                                  std::enable_shared_from_this<TernActiveVenue> {
  /// Waypoints of this venue.
  using Waypoints = std::vector<std::shared_ptr<TernWaypoint>>;

  /// A text for visitors.
  Value name;
  /// The one map that the document itself may carry; it is among `maps` too.
  Nested<TernMap> map;
  /// The labels of its maps.
  Nested<TernMapLabelCollection> mapLabels;
  /// Free data of the venue's owner.
  Value extensors;
  /// A boolean; true when the document does not say.
  Value status;
  /// When it is a text, the id of the map template that belongs to the venue.
  Value defaultMapTemplateId;
  /// That template's document, once it has been loaded.
  Value mapTemplateData;
  /// Id of the customer it belongs to.
  Value customerId;
  /// Time stamp of the document.
  Value generatedAt;
  /// A code, 0 when the document has no number for it.
  Value labelType;
  /// A code, 0 when the document has no number for `labelType`, whatever it says here.
  Value clustering;

  /// See TernBaseModel::initWithDictionary. "coordinates" and the collections are made of their
  /// documents; `maps` is there and holds nothing but the document's own map.
  static std::shared_ptr<TernActiveVenue> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Left out: `maps`, `extensors`, `status`, `customerId`,
  /// `generatedAt`, `labelType`, `clustering`, and what is built: the copy has no graph.
  std::shared_ptr<TernActiveVenue> copyWithZone() const;

  /// Sets `mapTemplateData`.
  void storeMapTemplateData(Value data) { mapTemplateData = std::move(data); }

  /// The graph that routes are searched in; null before the first rebuild.
  std::shared_ptr<TernASGrid> globalASGrid() const;
  /// Builds a new graph of the venue as it is now, before it returns.
  void loadGridData();
  /// What is searched for the nearest element; null before the first rebuild.
  std::shared_ptr<TernNearestElement> nearestElement() const;
  /// Builds a new one from the venue as it is now, before it returns; empty when no shared_ptr
  /// holds the venue. The one that is replaced stays as it is, since somebody may be searching it.
  void loadKDTree();
  /// Rebuilds what routes are searched in on the background queue. Rebuilds of one graph wait for
  /// each other, while a later one may overlap with those of the graph before; whoever asks for the
  /// graph meanwhile gets the old one or the new. A graph that is being replaced keeps what its
  /// last search has written, since somebody may be reading a route of it. The completion, which
  /// may be empty, is called once, on the queue's thread, while the graph that has been replaced is
  /// still locked, with whether all was built: where memory runs out nothing changes. Not at all
  /// when the process ends before. A venue that no shared_ptr holds is rebuilt before the call
  /// returns.
  void updateWayfindDataWithCompletion(std::function<void(bool)> completion);

  /// The cheapest route over links of at most that accessibility level; empty when there is none.
  /// Ids are compared in 32 bits.
  TernRoute wayfind(const std::shared_ptr<TernWaypoint>& start,
                    const std::shared_ptr<TernWaypoint>& to,
                    std::int64_t accessibility) const override;
  /// The same as `globalASGrid`.
  std::shared_ptr<TernASGrid> getGrid() const override { return globalASGrid(); }
  /// The same as `maps`.
  std::shared_ptr<TernMapCollection> getMaps() const override { return maps; }

  /// The order in which to visit several destinations, with a route for each; see
  /// TernPOIOptimization.hpp. The completion is called once, before the call returns.
  void wayfindToMultipleDestinations(
      const std::vector<std::shared_ptr<TernDestination>>& toDestinations,
      const std::shared_ptr<TernWaypoint>& fromStartWayPoint, std::int64_t accessibility,
      const std::function<void(std::vector<TernRoute>,
                               std::vector<std::shared_ptr<TernDestination>>)>& completion) const;

  /// The same route and an alternative beside it, or neither; see TernASAlternativePath.hpp for the
  /// options and the ids. The completion is called once, before the call returns; the routes are
  /// copies.
  void wayfind(const std::shared_ptr<TernWaypoint>& start, const std::shared_ptr<TernWaypoint>& to,
               const Value& options, std::int64_t accessibility,
               const TernASAlternativePath::Completion& completionHandler) const;

  /// The waypoint nearest to the point by straight line, of several the first; null for an empty
  /// list.
  static std::shared_ptr<TernWaypoint> getClosestWaypointInArray(const Waypoints& waypoints,
                                                                 TernCoordinate toCoordinate);
  /// Null without a map or without waypoints on it.
  static std::shared_ptr<TernWaypoint> getClosestWaypointToCoordinateOnMap(
      const std::shared_ptr<TernMap>& map, TernCoordinate coordinate);
  /// The waypoint with the shortest route to the given one, by the length of the lines drawn; that
  /// one itself when it is in the list. Null when there is no route, and also when the shortest has
  /// no length.
  std::shared_ptr<TernWaypoint> getClosestWaypointInArray(
      const Waypoints& waypoints, const std::shared_ptr<TernWaypoint>& toWaypoint,
      std::int64_t accessibility) const;

  /// What `nearestElement` answers; see TernNearestElement.hpp. Before the first rebuild that there
  /// is no k-d tree yet.
  void searchNearestElement(
      const TernElement& element, TernCoordinate toCoordinate,
      const std::shared_ptr<TernMap>& forMap,
      const std::function<void(std::shared_ptr<TernWaypoint>, std::optional<TernElement>,
                               std::optional<TernError>)>& completion) const;

  /// The middle of the first map, as longitude and latitude; without a map that is logged and gives
  /// (0, 0).
  TernCoordinate getCenterCoordinates() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
  void rebuild(const std::function<void(bool)>& completion);
  TERN_INTERNAL void replaceGridAndTrees();

  mutable Mutex gridMutex_;
  std::shared_ptr<TernASGrid> globalASGrid_ TERN_GUARDED_BY(gridMutex_);
  std::shared_ptr<TernNearestElement> nearestElement_ TERN_GUARDED_BY(gridMutex_);
};

}  // namespace tern
