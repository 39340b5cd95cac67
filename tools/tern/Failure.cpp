#include "tools/tern/Failure.hpp"

#include <utility>

namespace tern::command {

Failure failure(ExitStatus status, TernErrorType type, std::string sentence) {
  return {status, TernError::initWithErrorType(type, sentence), std::move(sentence)};
}

Failure wrongWords(std::string message) {
  return failure(ExitStatus::wrongWords, TernErrorTypeIncorrectObjectType, std::move(message));
}

}  // namespace tern::command
