#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernLocale.hpp"

namespace tern::inline v5 {

/// The languages of a venue.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernLocaleCollection : public TernTypedCollection<TernLocale> {
 public:
  /// Without records.
  TernLocaleCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernLocaleCollection> copyWithZone() const;

  /// The first of that name, in any case.
  std::shared_ptr<TernLocale> getByName(const Value& name) const;
  /// The first of that code, in any case.
  std::shared_ptr<TernLocale> getByLocaleCode(const Value& localeCode) const;
};

}  // namespace tern
