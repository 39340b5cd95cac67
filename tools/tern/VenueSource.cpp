#include "tools/tern/VenueSource.hpp"

#include <utility>

#include "tools/tern/CacheFolder.hpp"
#include "tools/tern/HubSource.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace tern::command {

namespace {

class FolderSource final : public VenueSource {
 public:
  explicit FolderSource(std::string folder) : folder_(std::move(folder)) {}

  Loaded<TernVenueCollection> readVenues() override { return command::readVenues(folder_); }
  Loaded<TernActiveVenue> loadVenue(std::optional<std::int64_t> venueId,
                                    std::optional<std::int64_t> buildingId) override {
    return command::loadVenue(folder_, venueId, buildingId);
  }
  Loaded<VenueFiles> loadFiles(std::vector<std::int64_t> venueIds) override {
    return command::loadFiles(folder_, std::move(venueIds));
  }

 private:
  const std::string folder_;
};

}  // namespace

std::variant<std::unique_ptr<VenueSource>, Failure> openSource(const Arguments& call,
                                                               int diagnostics) {
  if (call.service.host.empty()) return std::make_unique<FolderSource>(call.data);
  auto folder = cacheFolder(call.service);
  if (auto* failure = std::get_if<Failure>(&folder)) return std::move(*failure);
  return std::make_unique<HubSource>(call.service, std::get<std::string>(folder), diagnostics);
}

}  // namespace tern::command
