#include "TernCoreKit/platform/Clock.hpp"

#include <memory>
#include <utility>

#include "TernCoreKit/platform/detail/Current.hpp"

namespace tern::inline v5 {

void setWallClock(WallClock clock) {
  detail::current<const WallClock>().set(clock ? std::make_shared<const WallClock>(std::move(clock))
                                               : nullptr);
}

WallTime wallTime() {
  const auto clock = detail::current<const WallClock>().get();
  return clock != nullptr ? (*clock)() : std::chrono::system_clock::now();
}

}  // namespace tern
