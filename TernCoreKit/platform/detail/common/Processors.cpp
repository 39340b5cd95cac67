#include "TernCoreKit/platform/detail/common/Processors.hpp"

#include <algorithm>
#include <thread>

#if defined(__linux__)
#include <sched.h>
#endif

namespace tern::inline v5::detail {

unsigned usableProcessors() {
#if defined(__linux__)
  // Refused on machines of more processors than a set holds.
  cpu_set_t usable;
  if (sched_getaffinity(0, sizeof usable, &usable) == 0) {
    return static_cast<unsigned>(CPU_COUNT(&usable));
  }
#endif
  return std::max(1U, std::thread::hardware_concurrency());
}

}  // namespace tern::detail
