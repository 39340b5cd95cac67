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

void answerLines(LineReader& lines, const TernAnswers& answers, Output& output);

// The same answers, made on that many threads. Each is handed over when it is there and those
// before it are. Fails: also by std::system_error, where not one thread is to be had.
void answerLinesSideBySide(LineReader& lines, const TernAnswers& answers, Output& output,
                           unsigned jobs);

}  // namespace tern::command
