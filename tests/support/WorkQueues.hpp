// Queues with which a test decides when background work runs.
//
//   const auto queue = std::make_shared<OnDemandQueue>();
//   const ScopedBackgroundQueue scope(queue);
//   venue->updateWayfindDataWithCompletion(completion);
//   queue->runNext();
//
// Threads: a RunNowQueue may be used from any; an OnDemandQueue and a scope from one.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>

#include "TernCoreKit/platform/WorkQueue.hpp"

namespace tern::test {

// Runs each task before `run` returns.
class RunNowQueue final : public WorkQueue {
 public:
  void run(std::function<void()> task) override { task(); }
};

// Keeps its tasks until the test wants them to run.
class OnDemandQueue final : public WorkQueue {
 public:
  void run(std::function<void()> task) override { tasks_.push_back(std::move(task)); }

  std::size_t waiting() const { return tasks_.size(); }
  // Runs the one that came first; false without one.
  bool runNext();
  // Runs all, also those that come meanwhile.
  void runAll();

 private:
  std::deque<std::function<void()>> tasks_;
};

// Makes a queue the process's background queue as long as it lives.
class ScopedBackgroundQueue {
 public:
  explicit ScopedBackgroundQueue(std::shared_ptr<WorkQueue> queue) {
    setBackgroundQueue(std::move(queue));
  }
  ~ScopedBackgroundQueue() { setBackgroundQueue(nullptr); }
  ScopedBackgroundQueue(const ScopedBackgroundQueue&) = delete;
  ScopedBackgroundQueue& operator=(const ScopedBackgroundQueue&) = delete;
};

}  // namespace tern::test
