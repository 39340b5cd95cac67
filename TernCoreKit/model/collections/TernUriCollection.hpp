#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernUri.hpp"

namespace tern::inline v5 {

/// The resource files of a map, a place or a label.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernUriCollection : public TernTypedCollection<TernUri> {
 public:
  /// Without records.
  TernUriCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernUriCollection> copyWithZone() const;

  /// Those of that kind of file.
  std::vector<std::shared_ptr<TernUri>> getByMimeType(const Value& mimeType) const;
  /// Those for that purpose.
  std::vector<std::shared_ptr<TernUri>> getByResourceType(const Value& resourceType) const;
};

}  // namespace tern
