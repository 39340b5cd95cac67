#include "TernCoreKit/service/ServiceHost.hpp"

#include <mutex>
#include <utility>

namespace tern {

namespace {

struct Host {
  std::mutex mutex;
  std::string url = TERN_DEFAULT_SERVICE_HOST;  // guarded by mutex
};

Host& host() {
  static auto& host = *new Host;
  return host;
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
