#include "tools/tern/Batch.hpp"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Mutex.hpp"
#include "tools/answering/AnswerPool.hpp"
#include "tools/answering/Blocks.hpp"

namespace tern::command {

namespace {

using answering::AnswerPool;

bool isBlank(const LineReader::Line& line) {
  return !line.tooLong && line.text.find_first_not_of(" \t\r") == std::string_view::npos;
}

// Stands for a line that is too long: no line holds a line break.
constexpr std::string_view tooLong = "\n";

std::string tooLongAnswer(std::size_t longestBytes) {
  const Value answer =
      refusal("the line is longer than " + std::to_string(longestBytes) + " bytes");
  return encodeJson(answer, JsonLayout::compact);
}

// Tells which requests must not be answered beside others: those that may change what others are
// answered. One too many costs time and changes no answer, so the line is not decoded.
class Barriers {
 public:
  bool isOne(std::string_view line) {
    const bool mayBlock = answering::mayBlock(line);
    hasBlocks_ = hasBlocks_ || mayBlock;
    // It lifts blocks on what it tries.
    return mayBlock || (hasBlocks_ && line.find("\"alternatives\"") != line.npos);
  }

 private:
  bool hasBlocks_ = false;
};

// The answers of a pool on their way out.
class AnswersOut {
 public:
  explicit AnswersOut(Output& output) : output_(output) {}

  void write(AnswerPool& pool, const std::shared_ptr<AnswerPool::Asker>& asker) {
    const MutexLock lock(mutex_);
    output_.write(pool.take(asker));
    output_.flush();
    if (output_.error() != 0) pool.leave(*asker);
  }

 private:
  // Taken before an answer is, so that they are written in their order.
  Mutex mutex_;
  Output& output_;
};

}  // namespace

void answerLines(LineReader& lines, const TernAnswers& answers, Output& output) {
  while (output.error() == 0) {
    if (!lines.hasLine()) output.flush();
    const auto line = lines.next();
    if (!line) return;
    if (isBlank(*line)) continue;
    output.write(line->tooLong ? tooLongAnswer(lines.longestBytes())
                               : answers.answerText(std::string(line->text)));
    output.write("\n");
  }
}

void answerLinesSideBySide(LineReader& lines, const TernAnswers& answers, Output& output,
                           unsigned jobs) {
  AnswersOut out(output);
  std::shared_ptr<AnswerPool::Asker> asker;
  AnswerPool pool(jobs);
  const std::size_t most = jobs * std::size_t{64};
  const auto answer = [&](std::string line) {
    return line == tooLong ? tooLongAnswer(lines.longestBytes())
                           : answers.answerText(std::move(line));
  };
  asker = pool.admit({.answer = answer,
                      .onAnswers = [&] { out.write(pool, asker); },
                      .bounds = {.requests = most, .bytes = jobs * (std::size_t{1} << 20U)}});
  Barriers barriers;
  while (pool.waitForRoom(*asker)) {
    const auto line = lines.next();
    if (!line) return;
    if (isBlank(*line)) continue;
    const std::string_view text = line->tooLong ? tooLong : line->text;
    pool.ask(asker, std::string(text), barriers.isOne(text));
  }
}

}  // namespace tern::command
