#include "TernCoreKit/answers/detail/KnownPlaces.hpp"

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::inline v5::detail {

std::shared_ptr<const TernPlaces> KnownPlaces::of(const TernActiveVenue& venue) {
  const auto grid = venue.globalASGrid();
  const MutexLock lock(mutex_);
  Known& known = known_[&venue];
  if (known.places == nullptr || known.grid.lock() != grid) {
    known.places = std::make_shared<TernPlaces>(venue);
    known.grid = grid;
  }
  return known.places;
}

}  // namespace tern::detail
