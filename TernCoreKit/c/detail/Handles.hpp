// What the handles of the C interface stand for. A handle is a number that is given once and never
// again, so that one which was closed is known from every other, on any thread, and nothing is ever
// read from where it points to.
//
//   tern_venue* handle = handleTo<tern_venue>(handles().add(venue));
//   const auto found = handles().find<OpenVenue>(numberOf(handle));  // null for one that was
//   closed
//
// Ownership: shares the objects; who has found one may use it however long that takes.
// Threads: any. Fails: by std::bad_alloc, or std::length_error when there are no numbers left.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <variant>

#include "TernCoreKit/platform/Mutex.hpp"

namespace tern::inline v5::detail {

struct OpenVenue;
class OpenHub;
class Sink;
class HostExchange;

class Handles {
 public:
  using Object = std::variant<std::shared_ptr<OpenVenue>, std::shared_ptr<OpenHub>,
                              std::shared_ptr<Sink>, std::shared_ptr<HostExchange>>;

  std::uintptr_t add(Object object);

  // The object; null without one of that kind.
  template <class T>
  std::shared_ptr<T> find(std::uintptr_t number) {
    const MutexLock lock(mutex_);
    const auto found = objects_.find(number);
    const auto* object =
        found != objects_.end() ? std::get_if<std::shared_ptr<T>>(&found->second) : nullptr;
    return object != nullptr ? *object : nullptr;
  }

  // The same, and the number stands for nothing from here on. Of several at once one gets it.
  template <class T>
  std::shared_ptr<T> take(std::uintptr_t number) {
    const MutexLock lock(mutex_);
    const auto found = objects_.find(number);
    auto* object =
        found != objects_.end() ? std::get_if<std::shared_ptr<T>>(&found->second) : nullptr;
    if (object == nullptr) return nullptr;
    auto taken = std::move(*object);
    objects_.erase(found);
    return taken;
  }

  std::size_t count();

 private:
  Mutex mutex_;
  std::map<std::uintptr_t, Object> objects_ TERN_GUARDED_BY(mutex_);
  std::uintptr_t last_ TERN_GUARDED_BY(mutex_) = 0;
};

// Those of the process, never destroyed.
Handles& handles();

template <class Handle>
Handle* handleTo(std::uintptr_t number) {
  return reinterpret_cast<Handle*>(number);
}

inline std::uintptr_t numberOf(const void* handle) {
  return reinterpret_cast<std::uintptr_t>(handle);
}

}  // namespace tern::detail
