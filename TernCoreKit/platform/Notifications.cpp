#include "TernCoreKit/platform/Notifications.hpp"

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Immortal.hpp"

namespace tern {

namespace {

struct Observer {
  ObserverToken token{};
  NotificationObserver notify;
  // A post that is under way passes over it.
  std::atomic<bool> isRemoved{false};
};

struct Observers {
  std::mutex mutex;
  // Guarded by mutex.
  std::vector<std::shared_ptr<Observer>> list;
  std::uint64_t lastToken = 0;
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
  const std::lock_guard lock(observers().mutex);
  added->token = ObserverToken{++observers().lastToken};
  observers().list.push_back(added);
  return added->token;
}

void removeObserver(ObserverToken token) {
  // What the observer owns goes away outside the lock.
  std::shared_ptr<Observer> removed;
  const std::lock_guard lock(observers().mutex);
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
    const std::lock_guard lock(observers().mutex);
    listening = observers().list;
  }
  for (const auto& observer : listening) {
    if (!observer->isRemoved) observer->notify(name, payload);
  }
}

}  // namespace tern
