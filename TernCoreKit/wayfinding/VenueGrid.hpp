// The records of one venue, or of several, that a graph is built of.
//
// Ownership: shares the records. Threads: as readers of the venues. Fails: never.
#pragma once

#include <memory>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::detail {

struct GridLists {
  TernASGrid::Waypoints waypoints;
  TernASGrid::Paths paths;
  TernASGrid::PathTypes pathTypes;
  TernASGrid::Maps maps;
  TernASGrid::Buildings buildings;

  // Puts the venue's records behind those that are there.
  void append(const TernVenueData& venue);
  std::shared_ptr<TernASGrid> makeGrid(bool isForMultiVenue) &&;
};

}  // namespace tern::detail
