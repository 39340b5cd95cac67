#pragma once

#include <memory>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Nested.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

class TernDestinationCollection;

/// The destinations of one venue, for an application that loads several.
///
/// Ownership, threads and failures are those of every record: see TernBaseModel.
struct TERN_API TernVenueDestination {
  /// Id of the venue.
  Value venueId;
  /// The destinations of that venue.
  Nested<TernDestinationCollection> destinations;

  /// See TernBaseModel::initWithDictionary. "destinations" becomes a collection.
  static std::shared_ptr<TernVenueDestination> initWithDictionary(Value dictionary);
  /// See TernBaseModel::copyWithZone. Every field is copied.
  std::shared_ptr<TernVenueDestination> copyWithZone() const;
};

}  // namespace tern
