#include "TernCoreKit/model/collections/TernUriCollection.hpp"

#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"

namespace tern::inline v5 {

TernUriCollection::TernUriCollection() { assignCollectionModelClass(detail::kindOf<TernUri>()); }

std::shared_ptr<TernUriCollection> TernUriCollection::copyWithZone() const { return copyOf(*this); }

std::vector<std::shared_ptr<TernUri>> TernUriCollection::getByMimeType(
    const Value& mimeType) const {
  return collect([&](const TernUri& each) { return detail::sameText(each.mimeType, mimeType); });
}

std::vector<std::shared_ptr<TernUri>> TernUriCollection::getByResourceType(
    const Value& resourceType) const {
  return collect(
      [&](const TernUri& each) { return detail::sameText(each.resourceType, resourceType); });
}

}  // namespace tern
