/// @file
/// The process-wide wall clock.
///
/// A host application, or a test, may put its own clock in place of the system's.
/// Threads: any may call either function at any time; the clock is called on the thread that asks,
/// outside every lock of the library, and must itself be safe to call from several at once.
#pragma once

#include <chrono>
#include <functional>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// A point in the wall clock's time.
using WallTime = std::chrono::system_clock::time_point;
/// Gives the time of the call.
using WallClock = std::function<WallTime()>;

/// Puts a clock in the place of the current one; an empty one brings the system's back.
TERN_API void setWallClock(WallClock clock);

/// The time by the clock that is in place.
[[nodiscard]] TERN_API WallTime wallTime();

}  // namespace tern
