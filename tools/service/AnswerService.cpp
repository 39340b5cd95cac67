#include "tools/service/AnswerService.hpp"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <variant>

#include "TernCoreKit/answers/ErrorAnswer.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "tools/answering/Blocks.hpp"

namespace tern::service {

namespace {

using answering::AnswerPool;

// More than there are cores, so that long questions keep short ones waiting less.
unsigned answeringThreads() { return 2 * std::max(2U, std::thread::hardware_concurrency()); }

// Thousands of clients may take their answers slowly at a time.
constexpr answering::OrderedRequests::Bounds aheadOfAClient{.requests = 16,
                                                            .bytes = std::size_t{64} << 10U};

// What stands on the lines of a text, but for blank ones.
class Lines {
 public:
  explicit Lines(std::string_view text) : left_(text) {}

  std::optional<std::string_view> next() {
    while (!left_.empty()) {
      const std::size_t end = std::min(left_.find('\n'), left_.size());
      const std::string_view line = left_.substr(0, end);
      left_.remove_prefix(std::min(end + 1, left_.size()));
      if (line.find_first_not_of(" \t\r") != line.npos) return line;
    }
    return std::nullopt;
  }

 private:
  std::string_view left_;
};

std::optional<ServedAnswer> objectionTo(std::string_view body, const AnswerLimits& limits) {
  Lines lines(body);
  std::size_t count = 0;
  while (const auto line = lines.next()) {
    if (line->size() > limits.lineBytes) {
      return errorAnswer(413,
                         "A line is longer than " + std::to_string(limits.lineBytes) + " bytes");
    }
    if (++count > limits.lines) {
      return errorAnswer(413, "There are more than " + std::to_string(limits.lines) + " lines");
    }
  }
  if (count == 0) return errorAnswer(400, "The body holds no request");
  return std::nullopt;
}

// Behind the request's id, if it has one.
std::string refused(const std::string& line, const Value& error) {
  const JsonResult request = decodeJson(line);
  Value answer = Value::map();
  const Value* id = request.value.isMap() ? request.value.find("id") : nullptr;
  if (id != nullptr) answer.set("id", *id);
  answer.set("error", error["error"]);
  return encodeJson(answer, JsonLayout::compact);
}

bool isBlock(const std::string& line) {
  return answering::mayBlock(line) && answering::blocks(decodeJson(line).value);
}

std::string answerWithin(const AnswerLimits& limits, std::chrono::steady_clock::time_point begin,
                         const TernAnswers& answers, std::string line) {
  if (std::chrono::steady_clock::now() - begin >= limits.time) {
    const std::string why = "not begun within " + std::to_string(limits.time.count()) + " seconds";
    return refused(line,
                   errorAnswer(TernError::initWithErrorType(TernErrorTypeUndefined, why, why)));
  }
  if (isBlock(line))
    return refused(line, refusal("nobody may block what others are answered about"));
  return answers.answerText(std::move(line));
}

// The answers to the lines of a body.
class AnswerStream final : public BodyStream {
 public:
  AnswerStream(AnswerPool& pool, std::atomic<std::size_t>& bodies, std::string body)
      : pool_(pool), bodies_(bodies), body_(std::move(body)) {
    ++bodies_;
  }
  ~AnswerStream() override {
    if (asker_ != nullptr) pool_.leave(*asker_);
    --bodies_;
  }
  AnswerStream(const AnswerStream&) = delete;
  AnswerStream& operator=(const AnswerStream&) = delete;

  void begin(AnswerPool::AskerSettings settings) {
    asker_ = pool_.admit(std::move(settings));
    askOn();
  }

  Piece read(char* to, std::size_t most) override {
    if (sent_ == answers_.size()) {
      answers_ = pool_.take(asker_);
      sent_ = 0;
      askOn();
    }
    const std::size_t bytes = answers_.copy(to, most, sent_);
    sent_ += bytes;
    return {.bytes = bytes, .isEnd = bytes == 0 && !next_ && pool_.isDone(*asker_)};
  }

 private:
  void askOn() {
    while (next_ && pool_.hasRoom(*asker_)) {
      pool_.ask(asker_, std::string(*next_));
      next_ = lines_.next();
    }
  }

  AnswerPool& pool_;
  std::atomic<std::size_t>& bodies_;
  const std::string body_;
  Lines lines_{body_};
  std::optional<std::string_view> next_ = lines_.next();
  std::shared_ptr<AnswerPool::Asker> asker_;
  // Taken from the pool, and how much of it has been read.
  std::string answers_;
  std::size_t sent_ = 0;
};

}  // namespace

AnswerService::AnswerService(VenueList venues, AnswerLimits limits)
    : limits_(limits), venues_(std::move(venues)), pool_(answeringThreads()) {}

ServedAnswer AnswerService::answer(ReceivedRequest& request, std::string_view venue) {
  if (bodies_ >= limits_.bodies) return errorAnswer(503, "Too many ask at once; try again");
  if (auto objection = objectionTo(request.body, limits_)) return *std::move(objection);
  auto found = venues_.find(venue);
  if (auto* failure = std::get_if<ServedAnswer>(&found)) return std::move(*failure);
  const auto stream = std::make_shared<AnswerStream>(pool_, bodies_, std::move(request.body));
  stream->begin({.answer =
                     [this, answers = std::get<SharedAnswers>(found),
                      begin = std::chrono::steady_clock::now()](std::string line) {
                       return answerWithin(limits_, begin, *answers, std::move(line));
                     },
                 .onAnswers = request.wake,
                 .bounds = aheadOfAClient});
  return {.stream = stream};
}

}  // namespace tern::service
