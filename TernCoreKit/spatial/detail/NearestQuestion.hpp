// One search for the nearest element: what is wanted, who says what is acceptable, and the way
// taken so far.
//
// Who says what is acceptable belongs to the question and not to the index: a tour that accepts
// only some waypoints must not narrow what another thread finds meanwhile.
//
// Ownership: borrows everything that it is made of. Threads: one. Several questions may be put to
//   one index at a time.
// Fails: by giving none; the state then says why, or as little as before.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "TernCoreKit/spatial/detail/NearestIndex.hpp"

namespace tern::inline v5::detail {

class NearestQuestion {
 public:
  // The venue is null when it is gone; without a delegate everything is acceptable.
  NearestQuestion(const NearestIndex& index, const TernVenueData* venue,
                  TernNearestElementDelegate* delegate, NearestState& state)
      : index_(index), venue_(venue), delegate_(delegate), state_(state) {}

  // See TernNearestElement for both.
  std::optional<TernNearestResult> nearestOnMap(const std::shared_ptr<TernWaypoint>& from,
                                                std::int64_t toMapId,
                                                const TernNearestElement::Elements& elements,
                                                std::int64_t accessibility);
  std::shared_ptr<TernWaypoint> nearestTo(TernCoordinate at, const std::shared_ptr<TernMap>& map,
                                          const TernElement& element);

 private:
  using Kind = TernElement::Kind;
  struct Arrival {
    TernNearestPoint point;
    const TernFloor* floor;  // the index's, or the target
  };

  std::shared_ptr<TernMap> mapById(std::int64_t id) const;
  std::shared_ptr<TernFloor> floorByMap(const std::shared_ptr<TernMap>& map) const;

  // Each leaves an error when the search cannot start.
  bool canSearchFor(const TernNearestElement::Elements& elements);
  bool standsOn(std::shared_ptr<TernMap> map);
  void startAt(TernNearestPoint point, const TernNearestElement::Elements& elements,
               std::int64_t level);
  void fail(TernErrorType type, const char* message);

  bool isAcceptable(const TernNearestPoint& candidate, const TernNearestPoint& query) const;
  std::shared_ptr<TernWaypoint> nearestAcceptable(const TernNearestPoint& query) const;
  std::shared_ptr<TernWaypoint> startAndWalk(TernCoordinate at, const std::shared_ptr<TernMap>& map,
                                             const TernElement& element);
  std::shared_ptr<TernWaypoint> walkFloors();
  std::shared_ptr<TernWaypoint> searchLevel(std::int64_t level, bool& isFloorValid);
  std::shared_ptr<TernWaypoint> searchFloor(const TernFloor& floor);

  std::shared_ptr<TernWaypoint> reach(const TernFloor& target, std::optional<std::int64_t> mapId);
  std::optional<TernNearestPoint> follow(TernNearestPoint connector, const TernFloor& target);
  std::optional<Arrival> stepToLevel(const TernNearestPoint& connector, const TernMap& from,
                                     std::int64_t level, const TernFloor& target);
  std::optional<TernNearestPoint> step(const TernNearestPoint& connector, const TernMap& from,
                                       const TernFloor& to);
  bool mayTake(const TernNearestPoint& connector) const;

  // What the connectors do not reach, by the venue's graph.
  std::shared_ptr<TernWaypoint> reachByRoute(std::optional<std::int64_t> mapId);
  std::shared_ptr<TernWaypoint> startOfRoute() const;
  TernNearestElement::Waypoints acceptableOn(std::optional<std::int64_t> mapId) const;

  float lengthOfChain(const TernWaypoint* from, const TernWaypoint* found) const;

  const NearestIndex& index_;
  const TernVenueData* const venue_;
  TernNearestElementDelegate* const delegate_;
  NearestState& state_;
  Kind wantedKind_ = Kind::other;
  // Ids of the wanted elements, sorted; none stands for an absent one.
  std::vector<std::optional<std::int64_t>> wantedIds_;
  // Null where the search starts from a point.
  std::shared_ptr<TernWaypoint> from_;
  // What routes may take; `accessible` knows two levels only.
  std::int64_t routeLevel_ = 100;
};

}  // namespace tern::detail
