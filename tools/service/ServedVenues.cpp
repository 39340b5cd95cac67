#include "tools/service/ServedVenues.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/answers/ErrorAnswer.hpp"

namespace tern::service {

ServedVenues::ServedVenues(VenueList list)
    : load_(std::move(list.load)), meant_(std::move(list.meant)) {
  for (const std::int64_t id : list.ids) {
    names_.append(names_.empty() ? "" : ", ").append(std::to_string(id));
    auto venue = std::make_unique<Venue>();
    venue->id = id;
    venues_.push_back(std::move(venue));
  }
}

ServedVenues::Venue* ServedVenues::venueOf(std::string_view id) {
  if (id.empty()) return venues_.size() == 1 ? venues_.front().get() : nullptr;
  const auto found = std::ranges::find_if(
      venues_, [&](const auto& venue) { return std::to_string(venue->id) == id; });
  return found != venues_.end() ? found->get() : nullptr;
}

std::variant<SharedAnswers, ServedAnswer> ServedVenues::find(std::string_view id) {
  if (id.empty() && meant_ != nullptr) return meant_;
  Venue* const venue = venueOf(id);
  if (venue == nullptr && id.empty() && !venues_.empty()) {
    return errorAnswer(400, "Name one of the venues " + names_ + ": /answer?venue=ID");
  }
  if (venue == nullptr) {
    const std::string named = id.empty() ? "" : " " + shortened(id);
    return errorAnswer(404, "There is no venue" + named +
                                (names_.empty() ? std::string() : "; there are " + names_));
  }
  const MutexLock lock(venue->mutex);
  if (venue->answers == nullptr) venue->answers = load_(venue->id);
  if (venue->answers == nullptr) {
    return errorAnswer(500, "Venue " + std::to_string(venue->id) + " cannot be loaded");
  }
  return venue->answers;
}

}  // namespace tern::service
