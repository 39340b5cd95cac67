// A work queue with a fixed number of threads, started as tasks come.
//
// Ownership: owns its threads and the tasks that wait. `stop`, which the destructor calls, waits
// for running tasks and drops the others; called from within a task it does not wait for that one.
// Threads: any, but for the destructor, which no task may run.
// Fails: where the system gives not even one thread, or no memory to keep a task, tasks run on the
// caller's.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <list>
#include <thread>
#include <vector>

#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/WorkQueue.hpp"

namespace tern::inline v5::detail {

class ThreadPool final : public WorkQueue {
 public:
  explicit ThreadPool(std::size_t threadCount) : threadCount_(threadCount) {
    threads_.reserve(threadCount);
  }
  ~ThreadPool() override { stop(); }
  ThreadPool(const ThreadPool&) = delete;
  ThreadPool& operator=(const ThreadPool&) = delete;

  void run(std::function<void()> task) override;
  // Later tasks are dropped.
  void stop();

 private:
  // Its elements move from one to another without memory.
  using Tasks = std::list<std::function<void()>>;

  // Whether there is a thread that will take the task.
  bool hasThreadForTask() TERN_REQUIRES(mutex_);
  void work();

  const std::size_t threadCount_;

  Mutex mutex_;
  std::condition_variable_any changed_;
  Tasks tasks_ TERN_GUARDED_BY(mutex_);
  std::vector<std::thread> threads_ TERN_GUARDED_BY(mutex_);
  std::size_t idle_ TERN_GUARDED_BY(mutex_) = 0;
  bool isStopped_ TERN_GUARDED_BY(mutex_) = false;
};

}  // namespace tern::detail
