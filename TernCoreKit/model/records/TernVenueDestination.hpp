// The destinations of one venue, for an application that loads several.
//
// Ownership, threads and failures are those of every record: see TernBaseModel.hpp.
#pragma once

#include <memory>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Nested.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern {

class TernDestinationCollection;

struct TERN_API TernVenueDestination {
  Value venueId;
  Nested<TernDestinationCollection> destinations;

  static std::shared_ptr<TernVenueDestination> initWithDictionary(Value dictionary);
  std::shared_ptr<TernVenueDestination> copyWithZone() const;
};

}  // namespace tern
