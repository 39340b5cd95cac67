#include "TernCoreKit/answers/ErrorAnswer.hpp"

#include <cstddef>
#include <utility>

#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::inline v5 {

namespace {

constexpr std::size_t shownBytes = 40;

}  // namespace

Value errorAnswer(const TernError& error) {
  return Value::map({{"error", Value::map({{"code", error.code},
                                           {"message", error.message},
                                           {"description", error.errorDescription}})}});
}

Value refusal(std::string message) {
  return errorAnswer(
      TernError::initWithErrorType(TernErrorTypeIncorrectObjectType, std::move(message)));
}

std::string shortened(std::string_view text) {
  if (text.size() <= shownBytes) return std::string(text);
  std::size_t end = shownBytes;
  while (end > 0 && continuesUtf8(text[end])) --end;
  return std::string(text.substr(0, end)) + "...";
}

}  // namespace tern
