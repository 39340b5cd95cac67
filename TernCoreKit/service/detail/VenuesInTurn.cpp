#include "TernCoreKit/service/detail/VenuesInTurn.hpp"

#include <cstddef>
#include <utility>

#include "TernCoreKit/platform/WorkQueue.hpp"

namespace tern::detail {

namespace {

struct Row : std::enable_shared_from_this<Row> {
  std::vector<std::int64_t> venueIds;
  std::function<void(std::int64_t, VenueLoaded)> load;
  std::function<void(LoadedVenues)> finish;
  std::size_t next = 0;
  LoadedVenues loaded;

  void goOn() {
    backgroundQueue()->run([self = shared_from_this()] { self->loadNext(); });
  }

  void loadNext() {
    if (next == venueIds.size()) return finish(std::move(loaded));
    load(venueIds[next++], [self = shared_from_this()](std::shared_ptr<TernActiveVenue> venue) {
      if (venue != nullptr) self->loaded.push_back(std::move(venue));
      self->goOn();
    });
  }
};

}  // namespace

void loadInTurn(std::vector<std::int64_t> venueIds,
                std::function<void(std::int64_t, VenueLoaded)> load,
                std::function<void(LoadedVenues)> finish) {
  auto row = std::make_shared<Row>();
  row->venueIds = std::move(venueIds);
  row->load = std::move(load);
  row->finish = std::move(finish);
  row->goOn();
}

}  // namespace tern::detail
