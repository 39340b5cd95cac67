#include "TernCoreKit/model/collections/TernPathCollection.hpp"

#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::inline v5 {

TernPathCollection::TernPathCollection() { assignCollectionModelClass(detail::kindOf<TernPath>()); }

std::shared_ptr<TernPathCollection> TernPathCollection::copyWithZone() const {
  return copyOf(*this);
}

std::vector<std::shared_ptr<TernPath>> TernPathCollection::getByPathType(
    const std::shared_ptr<TernPathType>& pathType) const {
  if (pathType == nullptr) return {};
  const auto id = static_cast<std::int32_t>(pathType->id.integer());
  return collect([=](const TernPath& path) { return path.pathTypeId.integer() == id; });
}

std::vector<std::shared_ptr<TernPath>> TernPathCollection::getByName(const Value& name) const {
  return collect([&](const TernPath& each) { return detail::sameText(each.name, name); });
}

std::vector<std::shared_ptr<TernPath>> TernPathCollection::getByWaypoint(
    const std::shared_ptr<TernWaypoint>& waypoint) const {
  if (waypoint == nullptr) return {};
  return collect(
      [&](const TernPath& path) { return detail::containsId(path.waypointIds, waypoint->id); });
}

std::vector<std::shared_ptr<TernPath>> TernPathCollection::getByDirection(
    std::int64_t direction) const {
  return collect([=](const TernPath& each) { return detail::isNumber(each.direction, direction); });
}

}  // namespace tern
