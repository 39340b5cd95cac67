// Answers requests about venues that come as the lines of a body, as `tern batch` does; the answers
// go out line by line, in order, as they are made.
//
//   POST /answer            about what is meant where none is named: the only venue
//   POST /answer?venue=2    about that one
//
// Whoever asks is answered of the same venue, so that nobody can block anything: such a request is
// refused. Threads that take a line of each body in turn make the answers; nobody who asks much, or
// takes answers slowly, keeps others waiting.
//
// Ownership: owns its threads and the venues, and must outlive the streams that it answers with.
// Threads: any. Fails: by the status of an answer; once that is out, by an error as the answer to a
// line.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <string_view>

#include "tools/answering/AnswerPool.hpp"
#include "tools/service/HttpServer.hpp"
#include "tools/service/ServedVenues.hpp"

namespace tern::service {

struct AnswerLimits {
  // Of one body. Beyond them it is answered with 413.
  std::size_t bodyBytes = std::size_t{1} << 20U;
  std::size_t lineBytes = std::size_t{64} << 10U;
  std::size_t lines = 10'000;
  // Bodies that are answered at a time. One more is answered with 503.
  std::size_t bodies = 3'000;
  // For all lines of a body. Those that have not begun by then are answered with an error.
  std::chrono::seconds time{60};
};

class AnswerService {
 public:
  explicit AnswerService(VenueList venues, AnswerLimits limits = {});

  const AnswerLimits& limits() const { return limits_; }

  // REQUIRES: the body is no longer than the limit.
  ServedAnswer answer(ReceivedRequest& request, std::string_view venue);

 private:
  const AnswerLimits limits_;
  ServedVenues venues_;
  std::atomic<std::size_t> bodies_ = 0;
  answering::AnswerPool pool_;
};

}  // namespace tern::service
