// What a command asks of what it has loaded.
//
// Ownership: keeps nothing. Threads: any. Fails: where there was no memory for the answer, by
// std::bad_alloc, which ends the call: "no route" would be another answer.
#pragma once

#include <new>

#include "TernCoreKit/answers/TernAnswers.hpp"

namespace tern::command {

inline Value answerTo(const Value& request, const TernAnswers& answers) {
  Value answer = answers.answer(request);
  const Value* error = answer.find("error");
  if (error != nullptr && (*error)["message"].text() == "out of memory") throw std::bad_alloc();
  return answer;
}

}  // namespace tern::command
