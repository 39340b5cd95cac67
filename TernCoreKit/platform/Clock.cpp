#include "TernCoreKit/platform/Clock.hpp"

#include <memory>
#include <mutex>
#include <utility>

namespace tern {
namespace {

// Guarded by `mutex`; a caller keeps the clock alive by its own pointer while it asks.
struct Slot {
  std::mutex mutex;
  std::shared_ptr<const WallClock> clock;  // null stands for the system's
};

// Never destroyed: objects that end after `main` may still ask.
Slot& slot() {
  static Slot& slot = *new Slot;
  return slot;
}

}  // namespace

void setWallClock(WallClock clock) {
  auto next = clock ? std::make_shared<const WallClock>(std::move(clock)) : nullptr;
  // The old clock goes outside the lock.
  const std::lock_guard lock(slot().mutex);
  slot().clock.swap(next);
}

WallTime wallTime() {
  std::shared_ptr<const WallClock> clock;
  {
    const std::lock_guard lock(slot().mutex);
    clock = slot().clock;
  }
  return clock != nullptr ? (*clock)() : std::chrono::system_clock::now();
}

}  // namespace tern
