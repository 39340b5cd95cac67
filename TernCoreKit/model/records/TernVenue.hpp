#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern::inline v5 {

struct TernPosition;

/// One entry of the customer's list of venues.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernVenue : TernBaseModel {
  /// A text for visitors.
  Value name;
  /// Id of a map; passed on.
  Value mapId;
  /// Its corners on the globe.
  Nested<TernPosition> coordinates;
  /// List of numbers: the bounding box; passed on.
  Value bbox;
  /// Code; passed on.
  Value status;
  /// Id of the customer it belongs to.
  Value customerId;

  /// See TernBaseModel::initWithDictionary. "coordinates" becomes a TernPosition.
  static std::shared_ptr<TernVenue> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Left out: `status` and `customerId`.
  std::shared_ptr<TernVenue> copyWithZone() const;

 private:
  std::shared_ptr<TernBaseModel> copyOfKind() const override { return copyWithZone(); }
};

}  // namespace tern
