#include "tests/support/ActiveVenue.hpp"

#include "TernCoreKit/model/venue/VenueAssembly.hpp"

namespace tern::test {

std::shared_ptr<TernActiveVenue> loadDrawnVenue(const Drawing& drawing) {
  auto venue = TernActiveVenue::initWithDictionary(drawVenueDocument(drawing));
  addBuilding(*venue, 1, drawBuildingDocument(drawing));
  attachWaypoints(*venue);
  venue->loadGridData();
  venue->loadKDTree();
  return venue;
}

}  // namespace tern::test
