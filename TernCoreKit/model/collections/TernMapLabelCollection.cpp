#include "TernCoreKit/model/collections/TernMapLabelCollection.hpp"

#include <cstddef>

#include "TernCoreKit/model/collections/TernMapLabelInstances.hpp"
#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::inline v5 {

TernMapLabelCollection::TernMapLabelCollection() {
  assignCollectionModelClass(detail::kindOf<TernMapLabel>());
}

std::shared_ptr<TernMapLabelCollection> TernMapLabelCollection::copyWithZone() const {
  return copyOf(*this);
}

std::vector<std::shared_ptr<TernMapLabel>> TernMapLabelCollection::getByMap(
    const std::shared_ptr<TernMap>& map) const {
  if (map == nullptr) return {};
  return collect([id = map->id.integer()](const TernMapLabel& label) -> std::size_t {
    return label.mapLabelInstances ? label.mapLabelInstances->getByMapId(id).size() : 0;
  });
}

std::vector<std::shared_ptr<TernMapLabel>> TernMapLabelCollection::getLabelsWithImage() const {
  return collect([](const TernMapLabel& label) { return detail::isPresent(label.svg); });
}

std::vector<std::shared_ptr<TernMapLabel>> TernMapLabelCollection::getLabelsWithoutImage() const {
  return collect([](const TernMapLabel& label) { return !detail::isPresent(label.svg); });
}

}  // namespace tern
