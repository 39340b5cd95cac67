#include "tools/tern/Failure.hpp"

#include <utility>

namespace tern::command {

Failure wrongWords(std::string message) {
  return {ExitStatus::wrongWords,
          TernError::initWithErrorType(TernErrorTypeIncorrectObjectType, std::move(message))};
}

Value errorAnswer(const TernError& error) {
  return Value::map({{"error", Value::map({{"code", error.code},
                                           {"message", error.message},
                                           {"description", error.errorDescription}})}});
}

Value notUnderstoodAnswer(std::string message) {
  return errorAnswer(wrongWords(std::move(message)).error);
}

}  // namespace tern::command
