#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"

namespace tern::inline v5 {

/// The kinds of path of a venue.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernPathTypeCollection : public TernTypedCollection<TernPathType> {
 public:
  /// Without records.
  TernPathTypeCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernPathTypeCollection> copyWithZone() const;

  /// Those of that name.
  std::vector<std::shared_ptr<TernPathType>> getByName(const Value& name) const;
  /// Those of that direction code.
  std::vector<std::shared_ptr<TernPathType>> getByDirection(std::int64_t direction) const;
};

}  // namespace tern
