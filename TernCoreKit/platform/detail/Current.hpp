// The one of a kind of service that the process uses now: the host application's own, or null,
// which stands for the default one.
//
// Ownership: shared with those who asked; who gets one may use it as long as he keeps it.
// Threads: any. Fails: never.
#pragma once

#include <memory>

#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/detail/common/Immortal.hpp"

namespace tern::inline v5::detail {

template <class Service>
class Current {
 public:
  std::shared_ptr<Service> get() {
    const MutexLock lock(mutex_);
    return service_;
  }

  void set(std::shared_ptr<Service> service) {
    // The old one goes away outside the lock: what it owns may ask for the current one as it ends.
    const MutexLock lock(mutex_);
    service_.swap(service);
  }

 private:
  Mutex mutex_;
  std::shared_ptr<Service> service_ TERN_GUARDED_BY(mutex_);
};

// One for each kind of service, never destroyed.
template <class Service>
Current<Service>& current() {
  static Immortal<Current<Service>> current;
  return current.value;
}

}  // namespace tern::detail
