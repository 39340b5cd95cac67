// The bounding corners of a venue or a building.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern {

struct TERN_API TernPosition {
  // Lists of two numbers: latitude and longitude in degrees.
  Value topLeft;
  Value bottomRight;

  static std::shared_ptr<TernPosition> initWithDictionary(Value dictionary);
  std::shared_ptr<TernPosition> copyWithZone() const;
};

}  // namespace tern
