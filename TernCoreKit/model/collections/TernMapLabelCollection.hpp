// The labels of a venue.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernMapLabel.hpp"

namespace tern {

struct TernMap;

class TERN_API TernMapLabelCollection : public TernTypedCollection<TernMapLabel> {
 public:
  TernMapLabelCollection();

  std::shared_ptr<TernMapLabelCollection> copyWithZone() const;

  // Those with an instance on the map or on all levels, once for each such instance.
  std::vector<std::shared_ptr<TernMapLabel>> getByMap(const std::shared_ptr<TernMap>& map) const;
  std::vector<std::shared_ptr<TernMapLabel>> getLabelsWithImage() const;
  std::vector<std::shared_ptr<TernMapLabel>> getLabelsWithoutImage() const;
};

}  // namespace tern
