#include "tools/tern/JoinedVenues.hpp"

#include <future>
#include <optional>
#include <utility>
#include <variant>

namespace tern::command {

namespace {

class Listener final : public TernMultiActiveVenuesDelegate {
 public:
  void multiVenueWayfindDataLoaded() override { isLoaded_.set_value(); }
  void wait() { isLoaded_.get_future().wait(); }

 private:
  std::promise<void> isLoaded_;
};

}  // namespace

std::shared_ptr<TernMultiActiveVenues> joinVenues(
    const std::vector<std::shared_ptr<TernActiveVenue>>& venues) {
  const auto listener = std::make_shared<Listener>();
  auto joined = TernMultiActiveVenues::initWithActiveVenues(venues, listener);
  listener->wait();
  return joined;
}

Loaded<TernMultiActiveVenues> loadVenues(VenueSource& source,
                                         const std::vector<std::int64_t>& venueIds) {
  std::vector<std::shared_ptr<TernActiveVenue>> venues;
  for (const std::int64_t id : venueIds) {
    auto loaded = source.loadVenue(id, std::nullopt);
    if (auto* failure = std::get_if<Failure>(&loaded)) return std::move(*failure);
    venues.push_back(std::get<std::shared_ptr<TernActiveVenue>>(std::move(loaded)));
  }
  return joinVenues(venues);
}

}  // namespace tern::command
