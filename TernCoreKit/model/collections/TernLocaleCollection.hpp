// The languages of a venue.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernLocale.hpp"

namespace tern {

class TERN_API TernLocaleCollection : public TernTypedCollection<TernLocale> {
 public:
  TernLocaleCollection();

  std::shared_ptr<TernLocaleCollection> copyWithZone() const;

  // The first that equals the argument in any case.
  std::shared_ptr<TernLocale> getByName(const Value& name) const;
  std::shared_ptr<TernLocale> getByLocaleCode(const Value& localeCode) const;
};

}  // namespace tern
