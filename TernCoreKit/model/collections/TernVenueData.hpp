#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

class TernAmenityCollection;
class TernBuildingCollection;
class TernDestinationCollection;
class TernMapCollection;
class TernPathTypeCollection;
struct TernPosition;

/// What a venue holds, as far as building its graph, searching it for something near and converting
/// its coordinates read it. The active venue is one; a test can fill one by hand.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernVenueData : TernBaseModel {
  /// Its corners on the globe, which the corners of its first map lie on.
  Nested<TernPosition> coordinates;
  /// Its buildings, loaded or not.
  Nested<TernBuildingCollection> buildings;
  /// The places that a visitor can be led to.
  Nested<TernDestinationCollection> destinations;
  /// The kinds of facility.
  Nested<TernAmenityCollection> amenities;
  /// The kinds of path, with their costs.
  Nested<TernPathTypeCollection> pathTypes;
  /// Every map of every loaded floor; may be null.
  std::shared_ptr<TernMapCollection> maps;

  /// Held by whoever changes the records while others search them, and by whoever has to see them
  /// unchanged: a rebuild, and a search that looks for what has come since it.
  Mutex& recordsMutex() const TERN_RETURNS_LOCK(recordsMutex_) { return recordsMutex_; }

 private:
  mutable Mutex recordsMutex_;
};

}  // namespace tern
