#include "TernCoreKit/platform/WorkQueue.hpp"

#include <utility>

#include "TernCoreKit/platform/detail/Current.hpp"
#include "TernCoreKit/platform/detail/ThreadPool.hpp"

namespace tern::inline v5 {

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
  static detail::Immortal<detail::ThreadPool> pool(defaultThreadCount);
  static const StopAtExit stopAtExit{pool.value};
  return pool.value;
}

}  // namespace

std::shared_ptr<WorkQueue> backgroundQueue() {
  if (auto queue = detail::current<WorkQueue>().get()) return queue;
  // It outlives everyone, so there is nothing to count.
  return {std::shared_ptr<void>(), &defaultPool()};
}

void setBackgroundQueue(std::shared_ptr<WorkQueue> queue) {
  detail::current<WorkQueue>().set(std::move(queue));
}

}  // namespace tern
