// HTTP without a network: a function answers each request before `send` returns.
//
// Ownership: owns the function. Threads: as the function.
#pragma once

#include <functional>
#include <utility>

#include "TernCoreKit/platform/Http.hpp"

namespace tern::fuzz {

class AnsweringTransport final : public HttpTransport {
 public:
  using Answer = std::function<HttpResponse(const HttpRequest&)>;

  explicit AnsweringTransport(Answer answer) : answer_(std::move(answer)) {}

  void send(HttpRequest request, Completion completion) override { completion(answer_(request)); }

 private:
  const Answer answer_;
};

}  // namespace tern::fuzz
