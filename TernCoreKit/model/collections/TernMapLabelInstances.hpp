// The placements of a label.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernMapLabelInstance.hpp"

namespace tern {

class TERN_API TernMapLabelInstances : public TernTypedCollection<TernMapLabelInstance> {
 public:
  TernMapLabelInstances();

  std::shared_ptr<TernMapLabelInstances> copyWithZone() const;

  // Those on that map and those on all levels.
  std::vector<std::shared_ptr<TernMapLabelInstance>> getByMapId(std::int64_t mapId) const;
  std::vector<std::shared_ptr<TernMapLabelInstance>> getLocationOnAllLevels() const;
};

}  // namespace tern
