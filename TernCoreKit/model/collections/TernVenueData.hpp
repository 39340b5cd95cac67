// What a venue holds, as far as building its graph, searching it for something near and converting
// its coordinates read it. The active venue is one; a test can fill one by hand.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern {

class TernAmenityCollection;
class TernBuildingCollection;
class TernDestinationCollection;
class TernMapCollection;
class TernPathTypeCollection;
struct TernPosition;

struct TERN_API TernVenueData : TernBaseModel {
  Nested<TernPosition> coordinates;
  Nested<TernBuildingCollection> buildings;
  Nested<TernDestinationCollection> destinations;
  Nested<TernAmenityCollection> amenities;
  Nested<TernPathTypeCollection> pathTypes;
  // Every map of every loaded floor; may be null.
  std::shared_ptr<TernMapCollection> maps;
};

}  // namespace tern
