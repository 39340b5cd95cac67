// One entry of the customer's list of venues.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Nested.hpp"

namespace tern {

struct TernPosition;

struct TERN_API TernVenue : TernBaseModel {
  Value name;
  Value mapId;
  Nested<TernPosition> coordinates;
  Value bbox;
  Value status;
  Value customerId;

  static std::shared_ptr<TernVenue> initWithDictionary(Value dictionary);
  std::shared_ptr<TernVenue> copyWithZone() const;
};

}  // namespace tern
