#include "tools/tern/Failure.hpp"

#include <utility>

namespace tern::command {

Failure wrongWords(std::string message) {
  return {ExitStatus::wrongWords,
          TernError::initWithErrorType(TernErrorTypeIncorrectObjectType, std::move(message))};
}

}  // namespace tern::command
