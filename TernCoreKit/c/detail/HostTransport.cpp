#include "TernCoreKit/c/detail/HostTransport.hpp"

#include <string>
#include <vector>

#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5::detail {

namespace {

HttpResponse failedResponse(const char* why) { return {.error = why}; }

// The request as C has it. REQUIRES: it outlives what is made of it.
struct RequestInC {
  explicit RequestInC(const HttpRequest& request) {
    for (const HttpHeader& header : request.headers) {
      headers.push_back(header.name.c_str());
      headers.push_back(header.value.c_str());
    }
    view.size = sizeof view;
    view.method = request.method.c_str();
    view.url = request.url.c_str();
    view.headers = headers.data();
    view.header_count = request.headers.size();
    view.body = request.body ? request.body->data() : nullptr;
    view.body_size = request.body ? request.body->size() : 0;
  }

  std::vector<const char*> headers;
  tern_http_request view{};
};

}  // namespace

void HostTransport::send(HttpRequest request, Completion completion) {
  std::shared_ptr<HostExchange> exchange;
  std::uintptr_t number = 0;
  const auto begin = [&] {
    const RequestInC inC(request);
    exchange = std::make_shared<HostExchange>(shared_from_this(), completion);
    number = handles().add(exchange);
    if (!keep(number)) return;
    host_->callbacks().http_send(host_->context(), &inC.view, handleTo<tern_http_exchange>(number));
    number = 0;
  };
  const bool isBegun = attempt(begin);
  if (isBegun && number == 0) return;
  if (number == 0) return completion(failedResponse(outOfMemory));
  if (handles().take<HostExchange>(number) == nullptr) return;
  exchange->end(number, failedResponse(isBegun ? "cancelled" : outOfMemory));
}

void HostTransport::end() {
  std::set<std::uintptr_t> numbers;
  {
    const MutexLock lock(mutex_);
    hasEnded_ = true;
    numbers.swap(numbers_);
  }
  for (const std::uintptr_t number : numbers) {
    const auto exchange = handles().take<HostExchange>(number);
    if (exchange == nullptr) continue;
    if (host_->callbacks().http_cancel != nullptr) {
      host_->callbacks().http_cancel(host_->context(), handleTo<tern_http_exchange>(number));
    }
    exchange->end(number, failedResponse("cancelled"));
  }
}

bool HostTransport::keep(std::uintptr_t number) {
  const MutexLock lock(mutex_);
  if (!hasEnded_) numbers_.insert(number);
  return !hasEnded_;
}

void HostTransport::forget(std::uintptr_t number) {
  const MutexLock lock(mutex_);
  numbers_.erase(number);
}

void HostExchange::end(std::uintptr_t number, HttpResponse response) {
  transport_->forget(number);
  completion_(std::move(response));
}

}  // namespace tern::detail
