// How many times something succeeds before it fails.
//
// Threads: any.
#pragma once

#include <atomic>
#include <cstddef>

namespace tern::test {

class Countdown {
 public:
  static constexpr std::size_t never = static_cast<std::size_t>(-1);

  // From here on: so many succeed, the next fails and, if `always`, all behind it.
  void start(std::size_t succeeding, bool always) {
    failsAlways_ = always;
    hasFailed_ = false;
    left_ = succeeding;
  }
  void stop() { left_ = never; }

  bool fails() {
    std::size_t now = left_.load(std::memory_order_relaxed);
    while (now != never) {
      const std::size_t next = now > 0 ? now - 1 : failsAlways_ ? 0 : never;
      if (!left_.compare_exchange_weak(now, next)) continue;
      if (now == 0) hasFailed_ = true;
      return now == 0;
    }
    return false;
  }
  bool hasFailed() const { return hasFailed_; }
  std::size_t left() const { return left_; }

 private:
  std::atomic<std::size_t> left_{never};
  std::atomic<bool> failsAlways_{false};
  std::atomic<bool> hasFailed_{false};
};

}  // namespace tern::test
