#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernMapLabel.hpp"

namespace tern::inline v5 {

struct TernMap;

/// The labels of a venue.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernMapLabelCollection : public TernTypedCollection<TernMapLabel> {
 public:
  /// Without records.
  TernMapLabelCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernMapLabelCollection> copyWithZone() const;

  /// Those with an instance on the map or on all levels, once for each such instance.
  std::vector<std::shared_ptr<TernMapLabel>> getByMap(const std::shared_ptr<TernMap>& map) const;
  /// Those that show an image.
  std::vector<std::shared_ptr<TernMapLabel>> getLabelsWithImage() const;
  /// Those that show their name.
  std::vector<std::shared_ptr<TernMapLabel>> getLabelsWithoutImage() const;
};

}  // namespace tern
