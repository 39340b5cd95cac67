// The kinds of path of a venue.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"

namespace tern {

class TERN_API TernPathTypeCollection : public TernTypedCollection<TernPathType> {
 public:
  TernPathTypeCollection();

  std::shared_ptr<TernPathTypeCollection> copyWithZone() const;

  std::vector<std::shared_ptr<TernPathType>> getByName(const Value& name) const;
  std::vector<std::shared_ptr<TernPathType>> getByDirection(std::int64_t direction) const;
};

}  // namespace tern
