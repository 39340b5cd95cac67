// How a call of the command ends.
//
// Threads: plain values. Fails: never.
#pragma once

#include <string>

#include "TernCoreKit/model/records/TernError.hpp"

namespace tern::command {

enum class ExitStatus : int {
  answered = 0,
  nothingFound = 1,
  wrongWords = 2,
  notLoaded = 3,
  // The answer could not be written, or the reader of it went away.
  notWritten = 4,
};

// Why a call ends without an answer.
struct [[nodiscard]] Failure {
  ExitStatus status = ExitStatus::wrongWords;
  // For a program: the library's own, where the library failed.
  TernError error;
  // For a person: one line that names the option or file and says what would be right.
  std::string sentence;
};

// With the sentence as the message of an error of that type.
Failure failure(ExitStatus status, TernErrorType type, std::string sentence);

Failure wrongWords(std::string message);

}  // namespace tern::command
