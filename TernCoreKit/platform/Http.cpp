#include "TernCoreKit/platform/Http.hpp"

#include <mutex>

#include "TernCoreKit/platform/detail/DefaultHttpTransport.hpp"

namespace tern {
namespace {

struct CurrentTransport {
  std::mutex mutex;
  std::shared_ptr<HttpTransport> transport;  // guarded by mutex; null stands for the default one
};

// Never destroyed: other static objects may send requests until the very end.
CurrentTransport& current() {
  static auto& current = *new CurrentTransport;
  return current;
}

}  // namespace

std::shared_ptr<HttpTransport> httpTransport() {
  {
    const std::lock_guard lock(current().mutex);
    if (current().transport != nullptr) return current().transport;
  }
  // It outlives everyone, so there is nothing to count.
  return {std::shared_ptr<void>(), &detail::defaultHttpTransport()};
}

void setHttpTransport(std::shared_ptr<HttpTransport> transport) {
  // The old transport goes away outside the lock.
  const std::lock_guard lock(current().mutex);
  current().transport.swap(transport);
}

}  // namespace tern
