#include "tools/tern/VenueChoice.hpp"

#include <utility>

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

}  // namespace tern::command
