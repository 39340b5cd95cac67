#include "TernCoreKit/model/collections/detail/Queries.hpp"

#include <algorithm>
#include <string>

#include "TernCoreKit/model/collections/detail/Text.hpp"

namespace tern::inline v5::detail {

namespace {

template <class Wanted>
std::size_t countLocations(const Locations& locations, Wanted wanted) {
  return static_cast<std::size_t>(std::count_if(
      locations.begin(), locations.end(),
      [&](const auto& location) { return location != nullptr && wanted(*location); }));
}

}  // namespace

bool isNumber(const Value& field, std::int64_t number) {
  if (field.isInteger()) return field.integer() == number;
  return field.number() == static_cast<double>(number);
}

bool containsId(const Value& list, std::int64_t id) {
  return std::ranges::any_of(
      list.items(), [=](const Value& item) { return item.isNumber() && item.integer() == id; });
}

bool containsId(const Value& list, const Value& id) {
  return isPresent(id) && containsId(list, id.integer());
}

std::size_t countText(const Value& list, const Value& text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(list.items(), [&](const Value& item) { return sameText(item, text); }));
}

std::size_t countOnMap(const Locations& locations, std::int64_t mapId) {
  return countLocations(
      locations, [=](const TernLocation& location) { return location.mapId.integer() == mapId; });
}

std::size_t countAtWaypoint(const Locations& locations, const Value& waypointId) {
  return countLocations(locations, [&](const TernLocation& location) {
    return containsId(location.waypointIds, waypointId);
  });
}

std::size_t countAtWaypoint(const Locations& locations, const Value& waypointId,
                            const Value& mapId) {
  if (!isPresent(mapId)) return 0;
  return countLocations(locations, [&](const TernLocation& location) {
    return isPresent(location.mapId) && location.mapId.integer() == mapId.integer() &&
           containsId(location.waypointIds, waypointId);
  });
}

const RecordMap::Entry* firstByKeyText(const RecordMap& records) {
  const RecordMap::Entry* first = nullptr;
  std::string firstText;
  for (const RecordMap::Entry& entry : records.entries()) {
    std::string text = lowered(entry.key.printed());
    if (first != nullptr && firstText <= text) continue;
    first = &entry;
    firstText = std::move(text);
  }
  return first;
}

}  // namespace tern::detail
