// What is reached at a waypoint.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/model/records/TernBaseModel.hpp"

namespace tern {

struct TERN_API TernAssociation : TernBaseModel {
  // Lists of ids.
  Value destinations;
  Value amenities;

  static std::shared_ptr<TernAssociation> initWithDictionary(Value dictionary);
  std::shared_ptr<TernAssociation> copyWithZone() const;
};

}  // namespace tern
