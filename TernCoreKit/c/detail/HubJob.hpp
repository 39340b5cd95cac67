// What a hub is asked to load: one job after another.
//
// Ownership: held by its hub until it has ended, and by the step that is under way.
// Threads: a step at a time, on any; `fail` from any at any time.
// Fails: by its own end, which is told exactly once.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/service/TernHub.hpp"
#include "TernCoreKit/service/WatchedTransport.hpp"

namespace tern::inline v5::detail {

// What jobs load from.
struct JobSource {
  std::shared_ptr<TernHub> hub;
  // The hub's own, but for its tokens.
  std::shared_ptr<WatchedTransport> transport;
  // Called when a job has ended.
  std::function<void()> next;
};

class HubJob {
 public:
  explicit HubJob(JobSource source) : source_(std::move(source)) {}
  virtual ~HubJob() = default;
  HubJob(const HubJob&) = delete;
  HubJob& operator=(const HubJob&) = delete;

  void start();
  // Ends it by the error unless it has ended.
  void fail(const TernError& error);

 protected:
  virtual std::shared_ptr<HubJob> self() = 0;
  // The first step.
  virtual void begin() = 0;
  virtual void tellError(const TernError& error) = 0;

  TernHub& hub() const { return *source_.hub; }
  bool hasServiceFailed() const { return !source_.transport->failure().empty(); }
  // The error of a load that found nothing and reports none.
  TernError cannotBeHad(const std::string& what) const;

  static TernError noMemoryForJob();

  // Ends it as `tell` does, unless it has ended; where that has no memory, by an error.
  template <class Tell>
  void succeed(Tell tell) {
    if (hasEnded_.exchange(true)) return;
    if (!attempt(tell)) tellError(noMemoryForJob());
    source_.next();
  }

  // A completion that takes the next step, the first time that it is called.
  template <class Job, class Step>
  auto then(Step step) {
    return [kept = self(), turn = turn_.load(), step](auto... answer) {
      auto expected = turn;
      if (!kept->turn_.compare_exchange_strong(expected, turn + 1) || kept->hasEnded_) return;
      const auto take = [&] { (static_cast<Job&>(*kept).*step)(std::move(answer)...); };
      if (!attempt(take)) kept->fail(noMemoryForJob());
    };
  }

 private:
  const JobSource source_;
  std::atomic<bool> hasEnded_ = false;
  std::atomic<int> turn_ = 0;
};

}  // namespace tern::detail
