#include "TernCoreKit/spatial/TernNearestElement.hpp"

#include <tuple>
#include <utility>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/spatial/detail/NearestIndex.hpp"
#include "TernCoreKit/spatial/detail/NearestQuestion.hpp"

namespace tern::inline v5 {

namespace {

TernError outOfMemoryError() {
  return TernError::initWithErrorType(TernErrorTypeUndefined, detail::outOfMemory,
                                      detail::outOfMemory);
}

}  // namespace

TernNearestElement::TernNearestElement() : index_(std::make_shared<detail::NearestIndex>()) {}

std::shared_ptr<TernNearestElement> TernNearestElement::init() {
  return std::make_shared<TernNearestElement>();
}

std::shared_ptr<TernNearestElement> TernNearestElement::another() const {
  auto made = init();
  const MutexLock madeLock(made->stateMutex_);
  const MutexLock lock(stateMutex_);
  made->index_ = index_;
  made->activeVenue_ = activeVenue_;
  return made;
}

void TernNearestElement::initializeKDTree(const std::shared_ptr<TernVenueData>& venue) {
  auto index = venue != nullptr ? std::make_shared<detail::NearestIndex>(*venue)
                                : std::make_shared<detail::NearestIndex>();
  const MutexLock lock(stateMutex_);
  index_ = std::move(index);
  activeVenue_ = venue;
}

// The state is copied so that searches of several threads do not meet in it.
template <class Ask>
auto TernNearestElement::ask(Ask ask) {
  MutexLock lock(stateMutex_);
  detail::NearestState state = state_;
  const auto index = index_;
  const auto venue = activeVenue_.lock();
  const auto accepting = delegate;
  lock.unlock();
  detail::NearestQuestion question(*index, venue.get(), accepting.get(), state);
  auto answer = ask(question, state);
  lock.lock();
  state_ = std::move(state);
  return answer;
}

std::optional<TernNearestResult> TernNearestElement::getNearestElementFrom(
    const std::shared_ptr<TernWaypoint>& from, std::int64_t toMapId, const Elements& elements,
    std::int64_t accessibility) {
  std::optional<TernNearestResult> found;
  const auto search = [&] {
    found = ask([&](detail::NearestQuestion& question, const auto&) {
      return question.nearestOnMap(from, toMapId, elements, accessibility);
    });
  };
  if (!detail::attempt(search)) setError(outOfMemoryError());
  return found;
}

void TernNearestElement::searchNearestElement(const TernElement& element, TernCoordinate at,
                                              const std::shared_ptr<TernMap>& map,
                                              const Completion& completion) {
  std::shared_ptr<TernWaypoint> found;
  std::optional<TernElement> reached;
  std::optional<TernError> error;
  const auto search = [&] {
    std::tie(found, error) = ask([&](detail::NearestQuestion& question, const auto& state) {
      auto waypoint = question.nearestTo(at, map, element);
      return std::pair(waypoint, waypoint == nullptr ? state.error : std::nullopt);
    });
    if (found != nullptr) reached = element;
  };
  if (!detail::attempt(search)) {
    found = nullptr;
    error = outOfMemoryError();
    setError(error);
  }
  if (completion) completion(std::move(found), std::move(reached), std::move(error));
}

void TernNearestElement::reset() {
  const MutexLock lock(stateMutex_);
  detail::NearestState fresh;
  fresh.arrayOfPathTypeTaken = std::move(state_.arrayOfPathTypeTaken);
  fresh.accessible = state_.accessible;
  state_ = std::move(fresh);
  activeVenue_.reset();
}

const TernNearestElement::Trees& TernNearestElement::treesDestination() const {
  return index_->treesOf(TernElement::Kind::destination);
}

const TernNearestElement::Trees& TernNearestElement::treesAmenity() const {
  return index_->treesOf(TernElement::Kind::amenity);
}

const TernNearestElement::Trees& TernNearestElement::treesPathType() const {
  return index_->treesOf(TernElement::Kind::pathType);
}

}  // namespace tern
