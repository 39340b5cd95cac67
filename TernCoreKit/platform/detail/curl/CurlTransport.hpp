// The default transport: libcurl's multi interface on one thread.
//
// Ownership: the thread and the transport share a worker, so that a completion, which runs on that
// thread, may destroy the transport.
// Threads: any. Fails: by the response's error; where the system gives no thread, on the caller's.
#pragma once

#include <memory>

#include "TernCoreKit/platform/Http.hpp"

namespace tern::inline v5::detail {

class CurlWorker;

class CurlTransport final : public HttpTransport {
 public:
  explicit CurlTransport(HttpSettings settings);
  // Answers what is under way by an error.
  ~CurlTransport() override;
  CurlTransport(const CurlTransport&) = delete;
  CurlTransport& operator=(const CurlTransport&) = delete;

  void send(HttpRequest request, Completion completion) override;

  // Waits for the completion that is running and drops all other requests, later ones included,
  // without a call.
  void dropAll();

 private:
  const std::shared_ptr<CurlWorker> worker_;
};

}  // namespace tern::detail
