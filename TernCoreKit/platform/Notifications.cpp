#include "TernCoreKit/platform/Notifications.hpp"

#include <algorithm>
#include <condition_variable>
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
  // Both are guarded by the mutex below. A post that is under way passes over what is removed.
  bool isRemoved = false;
  int runningCalls = 0;
};

struct Observers {
  Mutex mutex;
  // One of an observer that is removed has ended.
  std::condition_variable_any callEnded;
  std::vector<std::shared_ptr<Observer>> list TERN_GUARDED_BY(mutex);
  std::uint64_t lastToken TERN_GUARDED_BY(mutex) = 0;
};

// Never destroyed: objects that end after `main` may still post.
Observers& observers() {
  static detail::Immortal<Observers> observers;
  return observers.value;
}

// How many observers this thread is within.
thread_local int callsOfThisThread = 0;

// A call of an observer, unless that has been removed.
class Call {
 public:
  explicit Call(Observer& observer) : observer_(observer) {
    const MutexLock lock(observers().mutex);
    mayRun_ = !observer.isRemoved;
    if (!mayRun_) return;
    ++observer.runningCalls;
    ++callsOfThisThread;
  }
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;
  ~Call() {
    if (!mayRun_) return;
    const MutexLock lock(observers().mutex);
    --callsOfThisThread;
    --observer_.runningCalls;
    if (observer_.isRemoved) observers().callEnded.notify_all();
  }

  bool mayRun() const { return mayRun_; }

 private:
  Observer& observer_;
  bool mayRun_ = false;
};

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
  MutexLock lock(observers().mutex);
  auto& list = observers().list;
  const auto found = std::ranges::find(list, token, [](const auto& each) { return each->token; });
  if (found == list.end()) return;
  removed = std::move(*found);
  list.erase(found);
  removed->isRemoved = true;
  while (callsOfThisThread == 0 && removed->runningCalls > 0) observers().callEnded.wait(lock);
}

void postNotification(std::string_view name, const Value& payload) {
  std::vector<std::shared_ptr<Observer>> listening;
  {
    const MutexLock lock(observers().mutex);
    listening = observers().list;
  }
  for (const auto& observer : listening) {
    const Call call(*observer);
    if (call.mayRun()) observer->notify(name, payload);
  }
}

}  // namespace tern
