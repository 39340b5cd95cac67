// A building of a venue, with its floors.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern {

class TernFloorCollection;
struct TernPosition;

struct TERN_API TernBuilding : TernBaseModel {
  Value name;
  Nested<TernPosition> coordinates;
  Value venueId;
  Nested<TernFloorCollection> floors;
  Value address;
  Value description;
  // Id of the floor that is shown first.
  Value defaultFloorId;
  // Time stamp of the document.
  Value generatedAt;
  Value customerId;
  Value recordHistory;
  Value mapId;

  static std::shared_ptr<TernBuilding> initWithDictionary(Value dictionary);
  std::shared_ptr<TernBuilding> copyWithZone() const;
};

}  // namespace tern
