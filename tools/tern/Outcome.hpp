// What a command comes to when it was not the words or the data that were wrong.
//
// Threads: a plain value. Fails: never.
#pragma once

#include <string>
#include <variant>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/Failure.hpp"

namespace tern::command {

struct Answer {
  ExitStatus status = ExitStatus::answered;
  // For standard output.
  std::string text;
  // For standard error, without a line break at its end; may be empty.
  std::string remark;
};

using Outcome = std::variant<Answer, Failure>;

// The line that --json prints.
inline std::string jsonLine(const Value& answer) {
  return encodeJson(answer, JsonLayout::compact) + "\n";
}

}  // namespace tern::command
