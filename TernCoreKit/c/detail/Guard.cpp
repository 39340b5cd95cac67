#include "TernCoreKit/c/detail/Guard.hpp"

#include <cstddef>
#include <cstring>
#include <new>
#include <utility>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Utf8.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5::detail {

namespace {

// What there is when there is no memory for another text.
char outOfMemoryText[] =
    R"({"error":{"code":"TN008","message":"out of memory","description":"out of memory"}})";

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const Utf8Character first = firstUtf8Character(text);
    if (first.code == Utf8Character::replacement && first.size == 1) return false;
    text.remove_prefix(first.size);
  }
  return true;
}

}  // namespace

void refuse(TernErrorType type, std::string message) {
  throw Refusal{TernError::initWithErrorType(type, std::move(message))};
}

void refuseArgument(std::string message) {
  refuse(TernErrorTypeIncorrectObjectType, std::move(message));
}

std::string textArgument(const char* text, std::string_view name) {
  if (text == nullptr) refuseArgument("the " + std::string(name) + " is NULL");
  if (!isUtf8(text)) refuseArgument("the " + std::string(name) + " is not UTF-8");
  return text;
}

char* textOf(std::string_view text) noexcept {
  char* const copy = new (std::nothrow) char[text.size() + 1];
  if (copy == nullptr) return outOfMemoryText;
  std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  return copy;
}

char* errorTextOf(const TernError& error) noexcept {
  char* text = outOfMemoryText;
  attempt([&] { text = textOf(encodeJson(errorAnswer(error), JsonLayout::compact)); });
  return text;
}

void freeText(char* text) noexcept {
  if (text != outOfMemoryText) delete[] text;
}

char* caughtText() noexcept {
  char* text = outOfMemoryText;
  try {
    throw;
  } catch (const Refusal& refusal) {
    text = errorTextOf(refusal.error);
  } catch (...) {
    // Memory, threads or numbers have run out; nothing else is thrown.
  }
  return text;
}

}  // namespace tern::detail
