#include "TernCoreKit/service/ServiceHost.hpp"

#include <utility>

#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/detail/common/Immortal.hpp"

namespace tern::inline v5 {

namespace {

struct Host {
  Mutex mutex;
  std::string url TERN_GUARDED_BY(mutex) = TERN_DEFAULT_SERVICE_HOST;
};

Host& host() {
  static detail::Immortal<Host> host;
  return host.value;
}

}  // namespace

std::string defaultServiceHost() {
  const MutexLock lock(host().mutex);
  return host().url;
}

void setDefaultServiceHost(std::string url) {
  if (url.empty()) url = TERN_DEFAULT_SERVICE_HOST;
  const MutexLock lock(host().mutex);
  host().url.swap(url);
}

}  // namespace tern
