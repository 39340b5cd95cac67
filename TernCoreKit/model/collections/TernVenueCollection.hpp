// The venues of a customer.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernVenue.hpp"

namespace tern {

class TERN_API TernVenueCollection : public TernTypedCollection<TernVenue> {
 public:
  // Filled by a batch that has keys of these names.
  Value loadedVenueCount;
  Value defaultId;

  TernVenueCollection();

  std::shared_ptr<TernVenueCollection> copyWithZone() const;

  // The venue under `defaultId`; null without one.
  std::shared_ptr<TernVenue> getDefault() const;
  // The first of that name.
  std::shared_ptr<TernVenue> getByName(const Value& name) const;

 private:
  void takeFields(Value& batch) override;
};

}  // namespace tern
