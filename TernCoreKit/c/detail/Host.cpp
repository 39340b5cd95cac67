#include "TernCoreKit/c/detail/Host.hpp"

#include <string>
#include <string_view>
#include <utility>

#include "TernCoreKit/c/detail/HostFiles.hpp"
#include "TernCoreKit/c/detail/HostTransport.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/detail/common/Immortal.hpp"

namespace tern::inline v5::detail {

namespace {

// What is in place of the library's own.
struct HostInPlace {
  std::shared_ptr<Host> host;
  std::shared_ptr<HostTransport> transport;
  std::shared_ptr<HostFiles> files;
};

struct HostPlace {
  // Held while another host comes, so that the services are all of one.
  Mutex change;
  Mutex mutex;
  HostInPlace current TERN_GUARDED_BY(mutex);
};

HostPlace& hostPlace() {
  static Immortal<HostPlace> place;
  return place.value;
}

LogSink sinkOf(const std::shared_ptr<Host>& host) {
  if (host == nullptr || host->callbacks().log == nullptr) return {};
  return [host](std::string_view line) {
    host->callbacks().log(host->context(), std::string(line).c_str());
  };
}

HostInPlace servicesOf(const std::shared_ptr<Host>& host) {
  HostInPlace services{host, nullptr, nullptr};
  if (host == nullptr) return services;
  if (host->callbacks().http_send != nullptr) {
    services.transport = std::make_shared<HostTransport>(host);
  }
  if (host->callbacks().file_read != nullptr) services.files = std::make_shared<HostFiles>(host);
  return services;
}

}  // namespace

void setHost(const std::shared_ptr<Host>& host) {
  HostInPlace services = servicesOf(host);
  {
    const MutexLock change(hostPlace().change);
    // The only step that takes memory comes first.
    setLogSink(sinkOf(host));
    if (host != nullptr) host->take();
    setHttpTransport(services.transport);
    setFileSystem(services.files);
    const MutexLock lock(hostPlace().mutex);
    std::swap(hostPlace().current, services);
  }
  // The old host hears of its end outside the locks.
  if (services.transport != nullptr) services.transport->end();
}

std::shared_ptr<Host> currentHost() {
  const MutexLock lock(hostPlace().mutex);
  return hostPlace().current.host;
}

}  // namespace tern::detail
