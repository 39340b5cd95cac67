#include "TernCoreKit/platform/detail/ThreadPool.hpp"

#include <utility>

#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5::detail {

void ThreadPool::run(std::function<void()> task) {
  Tasks kept;
  const bool isKept = attempt([&] { kept.push_back(std::move(task)); });
  {
    const MutexLock lock(mutex_);
    if (isStopped_) return;
    if (isKept && hasThreadForTask()) tasks_.splice(tasks_.end(), kept);
  }
  if (isKept && kept.empty()) {
    changed_.notify_one();
  } else {
    attempt(isKept ? kept.front() : task);
  }
}

bool ThreadPool::hasThreadForTask() {
  if (tasks_.size() < idle_ || threads_.size() == threadCount_) return true;
  std::thread started;
  attempt([&] { started = std::thread([this] { work(); }); });
  // Where no more are to be had, those that there are must do.
  if (started.joinable()) threads_.push_back(std::move(started));
  return !threads_.empty();
}

void ThreadPool::work() {
  MutexLock lock(mutex_);
  for (;;) {
    ++idle_;
    while (!isStopped_ && tasks_.empty()) changed_.wait(lock);
    --idle_;
    if (isStopped_) return;
    Tasks taken;
    taken.splice(taken.end(), tasks_, tasks_.begin());
    lock.unlock();
    attempt(taken.front());
    taken.clear();
    lock.lock();
  }
}

void ThreadPool::stop() {
  Tasks dropped;
  std::vector<std::thread> threads;
  {
    const MutexLock lock(mutex_);
    isStopped_ = true;
    dropped.swap(tasks_);
    threads.swap(threads_);
  }
  changed_.notify_all();
  dropped.clear();
  for (std::thread& thread : threads) {
    if (thread.get_id() != std::this_thread::get_id()) {
      thread.join();
    } else {
      // The task that called goes on; the destructor will wait for it.
      const MutexLock lock(mutex_);
      threads_.push_back(std::move(thread));
    }
  }
}

}  // namespace tern::detail
