#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernMapLabelInstance.hpp"

namespace tern::inline v5 {

/// The placements of a label.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernMapLabelInstances : public TernTypedCollection<TernMapLabelInstance> {
 public:
  /// Without records.
  TernMapLabelInstances();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernMapLabelInstances> copyWithZone() const;

  /// Those on that map and those on all levels.
  std::vector<std::shared_ptr<TernMapLabelInstance>> getByMapId(std::int64_t mapId) const;
  /// Those on all levels.
  std::vector<std::shared_ptr<TernMapLabelInstance>> getLocationOnAllLevels() const;
};

}  // namespace tern
