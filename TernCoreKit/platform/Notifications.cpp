#include "TernCoreKit/platform/Notifications.hpp"

#include <atomic>
#include <memory>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/detail/common/Immortal.hpp"

namespace tern::inline v5 {

namespace {

struct Observer {
  ObserverToken token{};
  NotificationObserver notify;
  // A post that is under way passes over it.
  std::atomic<bool> isRemoved{false};
};

struct Observers {
  Mutex mutex;
  std::vector<std::shared_ptr<Observer>> list TERN_GUARDED_BY(mutex);
  std::uint64_t lastToken TERN_GUARDED_BY(mutex) = 0;
};

// Never destroyed: objects that end after `main` may still post.
Observers& observers() {
  static detail::Immortal<Observers> observers;
  return observers.value;
}

}  // namespace

ObserverToken addObserver(NotificationObserver observer) {
  auto added = std::make_shared<Observer>();
  added->notify = std::move(observer);
  const MutexLock lock(observers().mutex);
  added->token = ObserverToken{++observers().lastToken};
  observers().list.push_back(added);
  return added->token;
}

void removeObserver(ObserverToken token) {
  // What the observer owns goes away outside the lock.
  std::shared_ptr<Observer> removed;
  const MutexLock lock(observers().mutex);
  std::erase_if(observers().list, [&](std::shared_ptr<Observer>& observer) {
    if (observer->token != token) return false;
    removed = std::move(observer);
    removed->isRemoved = true;
    return true;
  });
}

void postNotification(std::string_view name, const Value& payload) {
  std::vector<std::shared_ptr<Observer>> listening;
  {
    const MutexLock lock(observers().mutex);
    listening = observers().list;
  }
  for (const auto& observer : listening) {
    if (!observer->isRemoved) observer->notify(name, payload);
  }
}

}  // namespace tern
