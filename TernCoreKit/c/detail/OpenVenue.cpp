#include "TernCoreKit/c/detail/OpenVenue.hpp"

#include <optional>
#include <utility>
#include <variant>

#include "TernCoreKit/c/detail/Guard.hpp"
#include "TernCoreKit/loading/VenueLoading.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"

namespace tern::inline v5::detail {

namespace {

std::shared_ptr<TernActiveVenue> venueFrom(const DocumentSource& source,
                                           std::optional<std::int64_t> id) {
  auto loaded = loadVenue(source, id);
  if (auto* error = std::get_if<TernError>(&loaded)) throw Refusal{std::move(*error)};
  return std::get<std::shared_ptr<TernActiveVenue>>(std::move(loaded));
}

}  // namespace

std::shared_ptr<OpenVenue> openVenue(const DocumentSource& source,
                                     const std::vector<std::int64_t>& ids) {
  if (ids.size() < 2) {
    const auto id = ids.empty() ? std::nullopt : std::optional(ids.front());
    return std::make_shared<OpenVenue>(OpenVenue{nullptr, TernAnswers(venueFrom(source, id))});
  }
  auto turn = JoinedTurn::take();
  if (turn == nullptr) throw Refusal{JoinedTurn::isTaken()};
  std::vector<std::shared_ptr<TernActiveVenue>> venues;
  for (const std::int64_t id : ids) venues.push_back(venueFrom(source, id));
  auto joined = joinVenues(venues);
  if (joined == nullptr) breakOffAttempt();
  return std::make_shared<OpenVenue>(OpenVenue{std::move(turn), TernAnswers(std::move(joined))});
}

}  // namespace tern::detail
