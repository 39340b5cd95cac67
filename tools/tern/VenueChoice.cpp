#include "tools/tern/VenueChoice.hpp"

#include <utility>

#include "TernCoreKit/loading/VenueChoice.hpp"

namespace tern::command {

Failure notLoaded(TernErrorType type, std::string line) {
  return failure(ExitStatus::notLoaded, type, std::move(line));
}

Failure notFound(std::string line) {
  return notLoaded(TernErrorTypeObjectNotFound, std::move(line));
}

Failure notLoaded(TernError error) {
  const auto toBeNamed = TernError::defaultErrorCodeForErrorType(TernErrorTypeIncorrectObjectType);
  if (error.code == toBeNamed) return wrongWords("--venue: " + error.message);
  std::string sentence = error.message;
  return {ExitStatus::notLoaded, std::move(error), std::move(sentence)};
}

std::variant<std::vector<std::int64_t>, Failure> chosenVenues(const TernVenueCollection& venues,
                                                              const std::string& place,
                                                              std::vector<std::int64_t> ids) {
  if (!ids.empty()) return ids;
  auto only = onlyVenue(venues, place);
  if (auto* error = std::get_if<TernError>(&only)) return notLoaded(std::move(*error));
  return std::vector{std::get<std::int64_t>(only)};
}

}  // namespace tern::command
