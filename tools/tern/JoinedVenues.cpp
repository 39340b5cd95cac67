#include "tools/tern/JoinedVenues.hpp"

#include <optional>
#include <utility>
#include <variant>

#include "TernCoreKit/loading/VenueLoading.hpp"
#include "tools/tern/VenueChoice.hpp"

namespace tern::command {

Loaded<TernMultiActiveVenues> loadVenues(VenueSource& source,
                                         const std::vector<std::int64_t>& venueIds) {
  std::vector<std::shared_ptr<TernActiveVenue>> venues;
  for (const std::int64_t id : venueIds) {
    auto loaded = source.loadVenue(id, std::nullopt);
    if (auto* failure = std::get_if<Failure>(&loaded)) return std::move(*failure);
    venues.push_back(std::get<std::shared_ptr<TernActiveVenue>>(std::move(loaded)));
  }
  auto joined = joinVenues(venues);
  if (joined == nullptr) return notLoaded(TernErrorTypeUndefined, "out of memory");
  return joined;
}

}  // namespace tern::command
