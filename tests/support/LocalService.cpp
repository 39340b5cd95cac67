#include "tests/support/LocalService.hpp"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <thread>
#include <utility>

namespace tern::test {

namespace {

// The socket does not block. Gives up when the other side is gone or takes nothing for a while.
void sendAll(int socket, std::string_view bytes) {
  constexpr int mostWaitMs = 5'000;
  while (!bytes.empty()) {
    pollfd wait{socket, POLLOUT, 0};
    if (::poll(&wait, 1, mostWaitMs) <= 0) return;
    const ssize_t count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace

LocalService::LocalService(std::string folder, std::chrono::seconds tokenValidity)
    : service_({.folder = std::move(folder),
                .clientId = clientId,
                .clientSecret = clientSecret,
                .tokenValidity = tokenValidity,
                .intercept = [this](const Request& request) { return intercept(request); }}) {
  if (const auto error = service_.start()) {
    std::fprintf(stderr, "LocalService: %s\n", error->c_str());
    std::abort();
  }
}

void LocalService::fault(std::string targetPart, std::string bytes, Times times) {
  const std::lock_guard lock(mutex_);
  faults_.push_back({std::move(targetPart), std::move(bytes), times});
}

void LocalService::delay(std::string targetPart, std::chrono::milliseconds time) {
  const std::lock_guard lock(mutex_);
  delays_.push_back({std::move(targetPart), time});
}

void LocalService::clearFaults() {
  const std::lock_guard lock(mutex_);
  faults_.clear();
  delays_.clear();
}

std::vector<LocalService::Request> LocalService::takeRequests() {
  const std::lock_guard lock(mutex_);
  return std::exchange(requests_, {});
}

std::vector<std::string> LocalService::takeTargets() {
  std::vector<std::string> targets;
  for (const Request& request : takeRequests()) {
    targets.push_back(request.method + " " + request.target);
  }
  return targets;
}

bool LocalService::intercept(const Request& request) {
  const auto fits = [&](const auto& fault) {
    return request.target.find(fault.targetPart) != std::string::npos;
  };
  std::optional<std::string> bytes;
  std::chrono::milliseconds wait{0};
  {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
    const auto delay = std::ranges::find_if(delays_, fits);
    if (delay != delays_.end()) wait = delay->time;
    const auto fault = std::ranges::find_if(faults_, fits);
    if (fault != faults_.end()) {
      bytes = fault->bytes;
      if (fault->times == Times::once) faults_.erase(fault);
    }
  }
  std::this_thread::sleep_for(wait);
  if (bytes) sendAll(request.socket, *bytes);
  return bytes.has_value();
}

std::string headerOf(const service::ReceivedRequest& request, const std::string& name) {
  return request.header(name).value_or("");
}

}  // namespace tern::test
