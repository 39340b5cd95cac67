#include "TernCoreKit/wayfinding/VenueGrid.hpp"

#include <utility>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"

namespace tern::inline v5 {

namespace {

template <class Record>
void appendAll(std::vector<std::shared_ptr<Record>>& list,
               std::vector<std::shared_ptr<Record>> more) {
  if (list.empty()) {
    list = std::move(more);
  } else {
    list.insert(list.end(), more.begin(), more.end());
  }
}

void append(VenueGridLists& lists, const TernVenueData& venue) {
  if (venue.maps != nullptr) {
    appendAll(lists.waypoints, venue.maps->getAllWaypoints());
    appendAll(lists.maps, venue.maps->getAll());
    for (const TernMap& map : venue.maps->each()) {
      if (map.paths) appendAll(lists.paths, map.paths->getAll());
    }
  }
  if (venue.pathTypes) appendAll(lists.pathTypes, venue.pathTypes->getAll());
  if (venue.buildings) appendAll(lists.buildings, venue.buildings->getAll());
}

}  // namespace

VenueGridLists listRecords(std::span<const TernVenueData* const> venues) {
  VenueGridLists lists;
  for (const TernVenueData* venue : venues) append(lists, *venue);
  return lists;
}

std::shared_ptr<TernASGrid> makeGrid(VenueGridLists lists, bool isForMultiVenue) {
  return TernASGrid::initASGrid(std::move(lists.waypoints), std::move(lists.paths),
                                std::move(lists.pathTypes), std::move(lists.maps),
                                std::move(lists.buildings), isForMultiVenue);
}

}  // namespace tern
