// The process's wall clock, turned by hand as long as it lives. It starts at 0.
//
// Threads: any.
#pragma once

#include <atomic>
#include <chrono>

#include "TernCoreKit/platform/Clock.hpp"

namespace tern::test {

class TurnedClock {
 public:
  TurnedClock() {
    setWallClock([this] { return WallTime(WallTime::duration(elapsed_.load())); });
  }
  ~TurnedClock() { setWallClock({}); }
  TurnedClock(const TurnedClock&) = delete;
  TurnedClock& operator=(const TurnedClock&) = delete;

  void turn(std::chrono::milliseconds by) {
    elapsed_ += std::chrono::duration_cast<WallTime::duration>(by).count();
  }

 private:
  std::atomic<WallTime::duration::rep> elapsed_ = 0;
};

}  // namespace tern::test
