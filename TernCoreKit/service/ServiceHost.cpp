#include "TernCoreKit/service/ServiceHost.hpp"

#include <mutex>
#include <utility>

#include "TernCoreKit/platform/detail/common/Immortal.hpp"

namespace tern {

namespace {

struct Host {
  std::mutex mutex;
  std::string url = TERN_DEFAULT_SERVICE_HOST;  // guarded by mutex
};

Host& host() {
  static detail::Immortal<Host> host;
  return host.value;
}

}  // namespace

std::string defaultServiceHost() {
  const std::lock_guard lock(host().mutex);
  return host().url;
}

void setDefaultServiceHost(std::string url) {
  if (url.empty()) url = TERN_DEFAULT_SERVICE_HOST;
  const std::lock_guard lock(host().mutex);
  host().url.swap(url);
}

}  // namespace tern
