#include "TernCoreKit/platform/WorkQueue.hpp"

#include <mutex>
#include <utility>

#include "TernCoreKit/platform/detail/ThreadPool.hpp"

namespace tern {

namespace {

// Two, so that a rebuild need not wait for one that is still under way.
constexpr unsigned defaultThreadCount = 2;

// Never destroyed: other static objects may hand over tasks until the very end. Only its threads
// end.
detail::ThreadPool& defaultPool() {
  struct StopAtExit {
    detail::ThreadPool& pool;
    ~StopAtExit() { pool.stop(); }
  };
  static auto& pool = *new detail::ThreadPool(defaultThreadCount);
  static const StopAtExit stopAtExit{pool};
  return pool;
}

struct CurrentQueue {
  std::mutex mutex;
  std::shared_ptr<WorkQueue> queue;  // guarded by mutex; null stands for the default one
};

CurrentQueue& current() {
  static auto& current = *new CurrentQueue;
  return current;
}

}  // namespace

std::shared_ptr<WorkQueue> backgroundQueue() {
  {
    const std::lock_guard lock(current().mutex);
    if (current().queue != nullptr) return current().queue;
  }
  // It outlives everyone, so there is nothing to count.
  return {std::shared_ptr<void>(), &defaultPool()};
}

void setBackgroundQueue(std::shared_ptr<WorkQueue> queue) {
  // The old queue goes away outside the lock.
  const std::lock_guard lock(current().mutex);
  current().queue.swap(queue);
}

}  // namespace tern
