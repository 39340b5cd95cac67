// HTTP over the callbacks of a host.
//
// Ownership: shares the host; each exchange is kept by its handle until it has ended.
// Threads: any. Fails: by the response's error, when the host or memory fails.
#pragma once

#include <memory>
#include <set>
#include <utility>

#include "TernCoreKit/c/detail/Handles.hpp"
#include "TernCoreKit/c/detail/Host.hpp"
#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/Mutex.hpp"

namespace tern::inline v5::detail {

class HostTransport final : public HttpTransport,
                            public std::enable_shared_from_this<HostTransport> {
 public:
  // REQUIRES: the host has `http_send`.
  explicit HostTransport(std::shared_ptr<Host> host) : host_(std::move(host)) {}

  void send(HttpRequest request, Completion completion) override;

  // Ends what is under way by an error and tells the host to cancel it. What is sent later is
  // answered by an error.
  void end();

 private:
  friend class HostExchange;

  // False when it has ended.
  bool keep(std::uintptr_t number);
  void forget(std::uintptr_t number);

  const std::shared_ptr<Host> host_;
  Mutex mutex_;
  // The exchanges that are under way.
  std::set<std::uintptr_t> numbers_ TERN_GUARDED_BY(mutex_);
  bool hasEnded_ TERN_GUARDED_BY(mutex_) = false;
};

// A request that waits for its answer. Whoever takes it from the handles ends it.
class HostExchange {
 public:
  HostExchange(std::shared_ptr<HostTransport> transport, HttpTransport::Completion completion)
      : transport_(std::move(transport)), completion_(std::move(completion)) {}

  void end(std::uintptr_t number, HttpResponse response);

 private:
  const std::shared_ptr<HostTransport> transport_;
  const HttpTransport::Completion completion_;
};

}  // namespace tern::detail
