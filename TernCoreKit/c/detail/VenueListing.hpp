// Lists the venues of a hub's customer. See HubJob.hpp.
#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "TernCoreKit/c/detail/HubJob.hpp"
#include "TernCoreKit/c/tern.h"

namespace tern::inline v5::detail {

class VenueListing final : public HubJob, public std::enable_shared_from_this<VenueListing> {
 public:
  VenueListing(JobSource source, tern_text_callback listed, void* context)
      : HubJob(std::move(source)), listed_(listed), context_(context) {}

 private:
  std::shared_ptr<HubJob> self() override { return shared_from_this(); }
  void begin() override;
  void tellError(const TernError& error) override;
  void takeVenues(std::optional<TernError> error);

  const tern_text_callback listed_;
  void* const context_;
};

}  // namespace tern::detail
