// Loads venues over a hub, with all their buildings and graphs, and joins several. See HubJob.hpp.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "TernCoreKit/c/detail/HubJob.hpp"
#include "TernCoreKit/c/detail/OpenVenue.hpp"
#include "TernCoreKit/c/tern.h"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"

namespace tern::inline v5::detail {

class VenuesLoad final : public HubJob,
                         public TernMultiActiveVenuesDelegate,
                         public std::enable_shared_from_this<VenuesLoad> {
 public:
  // Without ids: the only venue of the customer.
  VenuesLoad(JobSource source, std::vector<std::int64_t> ids, tern_venue_callback loaded,
             void* context)
      : HubJob(std::move(source)), ids_(std::move(ids)), loaded_(loaded), context_(context) {}

  void multiVenueWayfindDataLoaded() override;
  void multiVenueWayfindDataFailed() override;

 private:
  std::shared_ptr<HubJob> self() override { return shared_from_this(); }
  void begin() override;
  void tellError(const TernError& error) override;

  void chooseVenue(std::optional<TernError> error);
  void loadNext();
  void takeVenue(std::shared_ptr<TernActiveVenue> venue, std::optional<TernError> error);
  void takeBuildings(std::shared_ptr<TernActiveVenue> venue, std::optional<TernError> error);
  void join();
  void takeJoined(bool isBuilt);
  void finish(OpenVenue venue);

  std::vector<std::int64_t> ids_;
  const tern_venue_callback loaded_;
  void* const context_;
  std::vector<std::shared_ptr<TernActiveVenue>> venues_;
  std::shared_ptr<JoinedTurn> joinedTurn_;
  std::shared_ptr<TernMultiActiveVenues> joined_;
  // The turn must not end before the rebuild has.
  std::shared_ptr<VenuesLoad> keptWhileJoining_;
  // The object and its graph, which come in either order.
  std::atomic<int> joinedParts_ = 0;
};

}  // namespace tern::detail
