#include "TernCoreKit/model/collections/VenueDestinationCollection.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/detail/Queries.hpp"

namespace tern::inline v5 {

namespace {

using Entries = VenueDestinationCollection::Entries;

template <class Wanted>
std::shared_ptr<TernVenueDestination> firstEntry(const Entries& entries, Wanted wanted) {
  const auto found = std::ranges::find_if(
      entries, [&](const auto& entry) { return entry != nullptr && wanted(*entry); });
  return found != entries.end() ? *found : nullptr;
}

// The first entry with a destination of which `wanted` is true.
template <class Wanted>
std::shared_ptr<TernVenueDestination> firstWith(const Entries& entries, Wanted wanted) {
  return firstEntry(entries, [&](const TernVenueDestination& entry) {
    if (!entry.destinations) return false;
    const auto destinations = entry.destinations->each();
    return std::any_of(destinations.begin(), destinations.end(), wanted);
  });
}

template <class Wanted>
Entries oncePerMatch(const Entries& entries, Wanted wanted) {
  Entries result;
  for (const std::shared_ptr<TernVenueDestination>& entry : entries) {
    if (entry == nullptr || !entry->destinations) continue;
    for (const TernDestination& destination : entry->destinations->each()) {
      if (wanted(destination)) result.push_back(entry);
    }
  }
  return result;
}

}  // namespace

std::shared_ptr<VenueDestinationCollection> VenueDestinationCollection::initWithItems(
    Entries items) {
  auto collection = std::make_shared<VenueDestinationCollection>();
  collection->items = std::move(items);
  return collection;
}

std::shared_ptr<TernVenueDestination> VenueDestinationCollection::getByVenueId(
    std::int64_t venueId) const {
  return firstEntry(
      items, [=](const TernVenueDestination& entry) { return entry.venueId.integer() == venueId; });
}

std::shared_ptr<TernVenueDestination> VenueDestinationCollection::getByDestinationId(
    std::int64_t destinationId) const {
  return firstEntry(items, [=](const TernVenueDestination& entry) {
    return entry.destinations && entry.destinations->findById(destinationId) != nullptr;
  });
}

std::shared_ptr<TernVenueDestination> VenueDestinationCollection::getByDestinationMapId(
    std::int64_t mapId) const {
  return firstWith(items, [&](const TernDestination& each) {
    return detail::countOnMap(each.locations, mapId) > 0;
  });
}

std::shared_ptr<TernVenueDestination> VenueDestinationCollection::getByDestinationWaypointId(
    std::int64_t waypointId) const {
  return firstWith(items, [&](const TernDestination& each) {
    return detail::countAtWaypoint(each.locations, waypointId) > 0;
  });
}

std::shared_ptr<TernVenueDestination> VenueDestinationCollection::getByDestinationUnitNumber(
    const Value& unitNumber) const {
  return firstWith(items, [&](const TernDestination& each) {
    return detail::sameText(each.unitNumber, unitNumber);
  });
}

auto VenueDestinationCollection::getByDestinationName(const Value& name) const -> Entries {
  return oncePerMatch(
      items, [&](const TernDestination& each) { return detail::sameText(each.name, name); });
}

auto VenueDestinationCollection::getByDestinationTag(const Value& tag) const -> Entries {
  return oncePerMatch(
      items, [&](const TernDestination& each) { return detail::countText(each.tags, tag) > 0; });
}

auto VenueDestinationCollection::getByDestinationKeyword(const Value& keyword) const -> Entries {
  return oncePerMatch(items, [&](const TernDestination& each) {
    return detail::countText(each.keywords, keyword) > 0;
  });
}

auto VenueDestinationCollection::getByDestinationExternalId(const Value&) const -> Entries {
  return items;
}

}  // namespace tern
