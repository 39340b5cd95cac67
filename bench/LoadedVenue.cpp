#include "bench/LoadedVenue.hpp"

#include <utility>

#include "TernCoreKit/model/venue/VenueAssembly.hpp"

namespace tern::bench {

std::shared_ptr<TernActiveVenue> assemble(IndoorVenue documents) {
  auto venue = TernActiveVenue::initWithDictionary(std::move(documents.venue));
  addBuilding(*venue, 1, std::move(documents.building));
  attachWaypoints(*venue);
  return venue;
}

}  // namespace tern::bench
