// Answers requests that come one a line, each on a line of its own and in order. Blank lines are
// passed over. Answers are handed over whenever the next request is not there yet, so that a
// partner may wait for each answer before it asks on.
//
// Threads: one. Fails: by the error of the reader or of the output, at which it ends.
#pragma once

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tools/tern/LineReader.hpp"
#include "tools/tern/Output.hpp"

namespace tern::command {

void answerLines(LineReader& lines, TernAnswers& answers, Output& output);

}  // namespace tern::command
