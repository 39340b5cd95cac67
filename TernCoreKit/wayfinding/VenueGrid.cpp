#include "TernCoreKit/wayfinding/VenueGrid.hpp"

#include <iterator>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"

namespace tern::detail {

namespace {

template <class Record>
void appendAll(std::vector<std::shared_ptr<Record>>& list,
               std::vector<std::shared_ptr<Record>> more) {
  if (list.empty()) {
    list = std::move(more);
  } else {
    list.insert(list.end(), std::move_iterator(more.begin()), std::move_iterator(more.end()));
  }
}

}  // namespace

void GridLists::append(const TernVenueData& venue) {
  if (venue.maps != nullptr) {
    appendAll(waypoints, venue.maps->getAllWaypoints());
    appendAll(maps, venue.maps->getAll());
    for (const TernMap& map : venue.maps->each()) {
      if (map.paths) appendAll(paths, map.paths->getAll());
    }
  }
  if (venue.pathTypes) appendAll(pathTypes, venue.pathTypes->getAll());
  if (venue.buildings) appendAll(buildings, venue.buildings->getAll());
}

std::shared_ptr<TernASGrid> GridLists::makeGrid(bool isForMultiVenue) && {
  return TernASGrid::initASGrid(std::move(waypoints), std::move(paths), std::move(pathTypes),
                                std::move(maps), std::move(buildings), isForMultiVenue);
}

}  // namespace tern::detail
