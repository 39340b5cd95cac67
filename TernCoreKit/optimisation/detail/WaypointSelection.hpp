// Settles each destination of a tour on one level and one waypoint.
//
// A destination goes to the level that most requested destinations count. Where several levels tie,
// or its location has several doors, it is left open at first; then, the others being settled, it
// goes to the door with the least mean straight-line distance to what else is visited or may be.
//
// Ownership: borrows the tables. Threads: one. Fails: never; what lies on no reachable level is
// marked so and not settled.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/optimisation/detail/TourTables.hpp"

namespace tern::inline v5::detail {

class WaypointSelection {
 public:
  explicit WaypointSelection(TourTables& tables) : tables_(tables) {}

  // REQUIRES: the tables have every level on which a destination is placed.
  void selectWaypointsOfDestinations();
  // Those of greater score first; of equal ones those with more locations, more waypoints, the
  // greater id.
  void rearrangeDestinations();
  // The location that was chosen, null without one and for a destination that the start serves.
  std::shared_ptr<TernLocation> finalizeWaypointFor(const TernDestination& destination,
                                                    bool shouldAdjustScore);
  // Chooses again, after scores have changed.
  void updateDecidedLocationForNewScore(const TernDestination& destination);
  // Takes the destination out of the scores of the levels that are not selected.
  void adjustTheScore(const TernDestination& destination, std::span<const std::int64_t> selected);

 private:
  // The location on the level of the greatest score, and the later levels that tie with it.
  struct Choice {
    std::shared_ptr<TernLocation> best;
    std::vector<std::int64_t> tied;
  };
  struct Door {
    std::shared_ptr<TernWaypoint> waypoint;
    float mean;  // map units
  };

  TernTourLevel& level(std::int64_t mapId) { return tables_.levelComputedDataDict[mapId]; }
  Choice chooseLocation(const TernDestination& destination) const;
  void settle(const TernDestination& destination, TernTourDestination& record,
              const TernLocation& best, bool shouldAdjustScore);
  void leaveOpen(const TernDestination& destination, TernTourDestination& record, Choice choice,
                 bool shouldAdjustScore);
  // Whether scores have changed.
  bool settleOpen(const TernDestination& destination);
  void examineDoorsOn(std::int64_t mapId, const TernDestination& destination, Door& best);
  void addToScores(const TernTourDestination& record, std::int64_t difference);

  TourTables& tables_;
};

}  // namespace tern::detail
