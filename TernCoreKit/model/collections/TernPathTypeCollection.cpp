#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"

#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"

namespace tern::inline v5 {

TernPathTypeCollection::TernPathTypeCollection() {
  assignCollectionModelClass(detail::kindOf<TernPathType>());
}

std::shared_ptr<TernPathTypeCollection> TernPathTypeCollection::copyWithZone() const {
  return copyOf(*this);
}

std::vector<std::shared_ptr<TernPathType>> TernPathTypeCollection::getByName(
    const Value& name) const {
  return collect([&](const TernPathType& each) { return detail::sameText(each.name, name); });
}

std::vector<std::shared_ptr<TernPathType>> TernPathTypeCollection::getByDirection(
    std::int64_t direction) const {
  return collect(
      [=](const TernPathType& each) { return detail::isNumber(each.direction, direction); });
}

}  // namespace tern
