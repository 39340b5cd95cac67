#include "TernCoreKit/platform/detail/ThreadPool.hpp"

#include <system_error>
#include <utility>

namespace tern::inline v5::detail {

void ThreadPool::run(std::function<void()> task) {
  {
    const MutexLock lock(mutex_);
    if (isStopped_) return;
    if (hasThreadForTask()) tasks_.push_back(std::exchange(task, nullptr));
  }
  if (task) {
    task();
  } else {
    changed_.notify_one();
  }
}

bool ThreadPool::hasThreadForTask() {
  if (tasks_.size() < idle_ || threads_.size() == threadCount_) return true;
  try {
    threads_.emplace_back([this] { work(); });
  } catch (const std::system_error&) {
    // No more threads to be had: those that there are must do.
  }
  return !threads_.empty();
}

void ThreadPool::work() {
  MutexLock lock(mutex_);
  for (;;) {
    ++idle_;
    while (!isStopped_ && tasks_.empty()) changed_.wait(lock);
    --idle_;
    if (isStopped_) return;
    std::function<void()> task = std::move(tasks_.front());
    tasks_.pop_front();
    lock.unlock();
    task();
    task = nullptr;
    lock.lock();
  }
}

void ThreadPool::stop() {
  std::deque<std::function<void()>> dropped;
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
