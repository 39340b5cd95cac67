// The resource files of a map, a place or a label.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernUri.hpp"

namespace tern {

class TERN_API TernUriCollection : public TernTypedCollection<TernUri> {
 public:
  TernUriCollection();

  std::shared_ptr<TernUriCollection> copyWithZone() const;

  std::vector<std::shared_ptr<TernUri>> getByMimeType(const Value& mimeType) const;
  std::vector<std::shared_ptr<TernUri>> getByResourceType(const Value& resourceType) const;
};

}  // namespace tern
