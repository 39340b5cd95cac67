// HTTP without a network: the test sees each request and answers it.
//
//   const auto transport = std::make_shared<FakeTransport>();
//   const ScopedHttpTransport scope(transport);
//   client->GET("/a", {}, completion);
//   transport->requests()[0].url;
//   transport->answer({.status = 200, .body = "{}"});
//
// With a function given, each request is answered by it before `send` returns.
//
// Ownership: a request of the library's holds its transport, so a test answers each. Threads: any.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "TernCoreKit/platform/Http.hpp"

namespace tern::test {

class FakeTransport final : public HttpTransport {
 public:
  using Answer = std::function<HttpResponse(const HttpRequest&)>;

  explicit FakeTransport(Answer answer = {}) : answer_(std::move(answer)) {}

  void send(HttpRequest request, Completion completion) override;

  // All that came, in their order.
  std::vector<HttpRequest> requests() const;
  std::size_t waiting() const;
  // Ends the request that waits longest, on this thread. REQUIRES: one waits.
  void answer(HttpResponse response);
  // Ends all that wait.
  void answerAll(const HttpResponse& response);

 private:
  const Answer answer_;
  mutable std::mutex mutex_;
  // Guarded by mutex_.
  std::vector<HttpRequest> requests_;
  std::deque<Completion> waiting_;
};

// Makes a transport the process's as long as it lives.
class ScopedHttpTransport {
 public:
  explicit ScopedHttpTransport(std::shared_ptr<HttpTransport> transport) {
    setHttpTransport(std::move(transport));
  }
  ~ScopedHttpTransport() { setHttpTransport(nullptr); }
  ScopedHttpTransport(const ScopedHttpTransport&) = delete;
  ScopedHttpTransport& operator=(const ScopedHttpTransport&) = delete;
};

// Sends a request and waits for its answer.
HttpResponse exchange(HttpTransport& transport, HttpRequest request);

}  // namespace tern::test
