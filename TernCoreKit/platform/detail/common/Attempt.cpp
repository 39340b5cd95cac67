#include "TernCoreKit/platform/detail/common/Attempt.hpp"

#include <new>
#include <stdexcept>
#include <system_error>

namespace tern::inline v5::detail {

bool attemptCall(void (*work)(void*), void* word) {
  try {
    work(word);
    return true;
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {  // a size beyond what any container holds
  } catch (const std::system_error&) {  // a thread that cannot be started
  }
  return false;
}

void breakOffAttempt() { throw std::bad_alloc(); }

}  // namespace tern::detail
