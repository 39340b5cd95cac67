#include "tools/tern/JoinedVenues.hpp"

#include <future>
#include <optional>
#include <utility>
#include <variant>

#include "tools/tern/VenueChoice.hpp"

namespace tern::command {

namespace {

class Listener final : public TernMultiActiveVenuesDelegate {
 public:
  void multiVenueWayfindDataLoaded() override { isLoaded_.set_value(true); }
  void multiVenueWayfindDataFailed() override { isLoaded_.set_value(false); }
  bool wait() { return isLoaded_.get_future().get(); }

 private:
  std::promise<bool> isLoaded_;
};

}  // namespace

std::shared_ptr<TernMultiActiveVenues> joinVenues(
    const std::vector<std::shared_ptr<TernActiveVenue>>& venues) {
  const auto listener = std::make_shared<Listener>();
  auto joined = TernMultiActiveVenues::initWithActiveVenues(venues, listener);
  return listener->wait() ? joined : nullptr;
}

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
