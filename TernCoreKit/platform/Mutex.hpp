#pragma once

#include <mutex>

#include "TernCoreKit/platform/ThreadAnnotations.hpp"

namespace tern::inline v5 {

/// A std::mutex that Clang knows as a lock, so that it can check what the lock guards. It works
/// with std::lock_guard and its like, too, but what happens under those is not checked.
///
/// Ownership: guards what its neighbours' TERN_GUARDED_BY name.
/// Threads: any.
/// Fails: as std::mutex.
class TERN_THREAD_ATTRIBUTE(capability("mutex")) Mutex {
 public:
  /// Waits until nobody else holds it. REQUIRES: this thread does not hold it.
  void lock() TERN_THREAD_ATTRIBUTE(acquire_capability()) { mutex_.lock(); }
  /// Lets the next one have it. REQUIRES: this thread holds it.
  void unlock() TERN_THREAD_ATTRIBUTE(release_capability()) { mutex_.unlock(); }

 private:
  std::mutex mutex_;
};

/// Holds a Mutex as long as it lives, but for the time between `unlock` and `lock`.
///
/// Ownership: borrows the mutex, which must outlive it.
/// Threads: one.
/// Fails: as std::mutex.
///
///     const MutexLock lock(mutex_);
class TERN_THREAD_ATTRIBUTE(scoped_lockable) MutexLock {
 public:
  /// Waits until nobody else holds the mutex.
  explicit MutexLock(Mutex& mutex) TERN_THREAD_ATTRIBUTE(acquire_capability(mutex))
      : lock_(mutex) {}
  MutexLock(const MutexLock&) = delete;
  MutexLock& operator=(const MutexLock&) = delete;
  ~MutexLock() TERN_THREAD_ATTRIBUTE(release_capability()) = default;

  /// Takes the mutex again. REQUIRES: `unlock` was the last call.
  void lock() TERN_THREAD_ATTRIBUTE(acquire_capability()) { lock_.lock(); }
  /// Gives the mutex away for a while. REQUIRES: the mutex is held.
  void unlock() TERN_THREAD_ATTRIBUTE(release_capability()) { lock_.unlock(); }

 private:
  std::unique_lock<Mutex> lock_;
};

}  // namespace tern
