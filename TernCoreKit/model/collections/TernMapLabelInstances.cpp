#include "TernCoreKit/model/collections/TernMapLabelInstances.hpp"

#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"

namespace tern::inline v5 {

TernMapLabelInstances::TernMapLabelInstances() {
  assignCollectionModelClass(detail::kindOf<TernMapLabelInstance>());
}

std::shared_ptr<TernMapLabelInstances> TernMapLabelInstances::copyWithZone() const {
  return copyOf(*this);
}

std::vector<std::shared_ptr<TernMapLabelInstance>> TernMapLabelInstances::getByMapId(
    std::int64_t mapId) const {
  return collect([=](const TernMapLabelInstance& each) {
    return each.mapId.integer() == mapId || each.allLevels.flag();
  });
}

std::vector<std::shared_ptr<TernMapLabelInstance>> TernMapLabelInstances::getLocationOnAllLevels()
    const {
  return collect(
      [](const TernMapLabelInstance& each) { return detail::isNumber(each.allLevels, 1); });
}

}  // namespace tern
