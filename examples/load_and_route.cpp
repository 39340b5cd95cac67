// Loads a venue from a mapping service and asks for a route.
//
//   TERN_CLIENT_SECRET=local load_and_route http://127.0.0.1:8080 22001 14016
#include <TernCoreKit/TernCoreKit.hpp>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <memory>
#include <optional>
#include <string>

namespace {

// Hears of every graph that has been built.
class GraphListener final : public tern::TernHubDelegate {
 public:
  void wayfindDataLoaded() override {
    if (!isBuilt_.exchange(true)) built_.set_value();
  }
  void wait() { built_.get_future().wait(); }

 private:
  std::atomic<bool> isBuilt_ = false;
  std::promise<void> built_;
};

struct Loaded {
  std::shared_ptr<tern::TernActiveVenue> venue;
  std::optional<tern::TernError> error;
};

Loaded loadVenue(tern::TernHub& hub, std::int64_t venueId) {
  std::promise<Loaded> loaded;
  hub.populateVenueWithDefaultBuildingByVenueId(
      venueId,
      [&](std::shared_ptr<tern::TernActiveVenue> venue, std::optional<tern::TernError> error) {
        loaded.set_value({std::move(venue), std::move(error)});
      });
  return loaded.get_future().get();
}

void print(const tern::TernRoute& route) {
  if (route.empty()) std::puts("There is no route.");
  for (const tern::TernPathPerFloor& part : route) {
    std::printf("map %lld: %zu waypoints, %.0f m so far\n", static_cast<long long>(part.mapId),
                part.points.size(), part.mmDistance / 1000);
  }
}

}  // namespace

int main(int count, char** words) {
  const char* secret = std::getenv("TERN_CLIENT_SECRET");
  if (count != 4 || secret == nullptr) {
    std::fputs("use: TERN_CLIENT_SECRET=... load_and_route HOST FROM TO\n", stderr);
    return 2;
  }
  const auto hub = tern::TernHub::initCustomerWithDictionary(tern::Value::map(
      {{"customerId", 1}, {"host", words[1]}, {"clientId", "local"}, {"clientSecret", secret}}));
  const auto listener = std::make_shared<GraphListener>();
  hub->setDelegate(listener);

  const Loaded loaded = loadVenue(*hub, 1);
  if (loaded.error) {
    std::fprintf(stderr, "%s %s\n", loaded.error->code.c_str(), loaded.error->message.c_str());
    return 1;
  }
  // A hub that finds neither the service nor a cached answer gives an empty venue.
  if (loaded.venue->maps->getCount() == 0) {
    std::fputs("The venue has no maps: is the service there?\n", stderr);
    return 1;
  }
  listener->wait();

  const auto grid = loaded.venue->globalASGrid();
  print(loaded.venue->wayfind(grid->getWPById(std::atoll(words[2])),
                              grid->getWPById(std::atoll(words[3])), 100));
}
