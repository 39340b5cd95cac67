// The edge between C and the library: what goes wrong behind it comes out as a text, never as an
// exception.
//
//   bool tern_venue_close(tern_venue* venue, char** error) noexcept {
//     return guarded(error, [&] { return closed<OpenVenue>(venue, "venue"); });
//   }
//
// Ownership: texts are the caller's until freeText. Threads: any.
// Fails: with the text of an error, for which there is always memory.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include "TernCoreKit/model/records/TernError.hpp"

namespace tern::inline v5::detail {

// Thrown behind the edge and caught at it.
struct Refusal {
  TernError error;
};

// Ends the call with an error.
[[noreturn]] void refuse(TernErrorType type, std::string message);
[[noreturn]] void refuseArgument(std::string message);

// Refuses a text that is NULL or not UTF-8, by its name.
std::string textArgument(const char* text, std::string_view name);

// A copy for C; where there is no memory for it, the text of that error.
char* textOf(std::string_view text) noexcept;
char* errorTextOf(const TernError& error) noexcept;
// NULL means nothing.
void freeText(char* text) noexcept;

// The text of the exception that is being handled.
char* caughtText() noexcept;

// What the work returns; 0 with a text in `error`, unless that is NULL, when it throws.
template <class Work>
std::invoke_result_t<Work> guarded(char** error, Work work) noexcept {
  char* text = nullptr;
  std::invoke_result_t<Work> result{};
  try {
    result = work();
  } catch (...) {
    text = caughtText();
  }
  if (error != nullptr) {
    *error = text;
  } else {
    freeText(text);
  }
  return result;
}

}  // namespace tern::detail
