// What the C interface returns, as texts that free themselves.
//
//   CError error;
//   tern_venue* venue = tern_venue_open_folder("nowhere", nullptr, error.out());
//   error.message();  // "there is no folder nowhere"
//
// Ownership: its own. Threads: one. Fails: never.
#pragma once

#include <string>
#include <utility>

#include "TernCoreKit/c/tern.h"
#include "TernCoreKit/platform/Json.hpp"

namespace tern::test {

// Frees what a function returned.
inline std::string takenText(char* text) {
  std::string copy = text != nullptr ? text : "";
  tern_text_free(text);
  return copy;
}

// "TN006 the venue is NULL" of an error's text; the text itself when it is none.
inline std::string errorLine(const std::string& text) {
  const Value decoded = decodeJson(text).value;
  const Value& error = decoded["error"];
  if (!error.isMap()) return text;
  return std::string(error["code"].text()) + " " + std::string(error["message"].text());
}

class CError {
 public:
  CError() = default;
  ~CError() { tern_text_free(text_); }
  CError(const CError&) = delete;
  CError& operator=(const CError&) = delete;

  char** out() {
    tern_text_free(std::exchange(text_, nullptr));
    return &text_;
  }
  // Empty without an error.
  std::string text() const { return text_ != nullptr ? text_ : ""; }
  std::string line() const { return errorLine(text()); }

 private:
  char* text_ = nullptr;
};

inline std::string answerOf(tern_venue* venue, const char* request) {
  return takenText(tern_venue_answer(venue, request));
}

}  // namespace tern::test
