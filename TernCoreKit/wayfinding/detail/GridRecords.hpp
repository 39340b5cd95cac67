// The records that a graph is built of.
//
// Ownership: shares them.
#pragma once

#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::inline v5::detail {

// None is null.
struct GridRecords {
  TernASGrid::Waypoints waypoints;
  TernASGrid::Paths paths;
  TernASGrid::PathTypes pathTypes;
  TernASGrid::Maps maps;
  TernASGrid::Buildings buildings;
  bool isForMultiVenue = false;
};

}  // namespace tern::detail
