#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernVenue.hpp"

namespace tern::inline v5 {

/// The venues of a customer.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernVenueCollection : public TernTypedCollection<TernVenue> {
 public:
  /// How many venues count as loaded; filled by a batch that has the key.
  Value loadedVenueCount;
  /// Id of the venue to show first; filled by a batch that has the key.
  Value defaultId;

  /// Without records.
  TernVenueCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernVenueCollection> copyWithZone() const;

  /// The venue under `defaultId`; null without one.
  std::shared_ptr<TernVenue> getDefault() const;
  /// The first of that name.
  std::shared_ptr<TernVenue> getByName(const Value& name) const;

 private:
  void takeFields(Value& batch) override;
};

}  // namespace tern
