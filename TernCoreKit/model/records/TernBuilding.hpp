#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

class TernFloorCollection;
struct TernPosition;

/// A building of a venue, with its floors.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernBuilding : TernBaseModel {
  /// A text for visitors.
  Value name;
  /// Its corners on the globe.
  Nested<TernPosition> coordinates;
  /// Id of the venue it stands in.
  Value venueId;
  /// Its floors; often missing until the building has been loaded.
  Nested<TernFloorCollection> floors;
  /// Its postal address, as text.
  Value address;
  /// A text for visitors.
  Value description;
  /// Id of the floor that is shown first.
  Value defaultFloorId;
  /// Time stamp of the document.
  Value generatedAt;
  /// Id of the customer it belongs to.
  Value customerId;
  /// Passed on.
  Value recordHistory;
  /// Id of a map; passed on.
  Value mapId;

  /// See TernBaseModel::initWithDictionary. "floors" becomes a collection, "coordinates" a
  /// TernPosition.
  static std::shared_ptr<TernBuilding> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Left out: `defaultFloorId`, `generatedAt`, `customerId`,
  /// `recordHistory` and `mapId`.
  std::shared_ptr<TernBuilding> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
