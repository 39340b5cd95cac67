#include "TernCoreKit/service/WatchedTransport.hpp"

#include <utility>

namespace tern::inline v5 {

namespace {

std::string failureOf(const HttpResponse& response, bool isToken) {
  if (response.status == 0) return response.error.value_or("it does not answer");
  if (isToken && response.status >= 400) {
    return "it gives no access token (status " + std::to_string(response.status) + ")";
  }
  return response.status == 500 ? "it answers with status 500" : "";
}

}  // namespace

void WatchedTransport::send(HttpRequest request, Completion completion) {
  const bool isToken = request.method == "POST";
  transport_->send(std::move(request), [record = record_, isToken,
                                        completion = std::move(completion)](HttpResponse response) {
    if (std::string failure = failureOf(response, isToken); !failure.empty()) {
      const MutexLock lock(record->mutex);
      record->failure = std::move(failure);
    }
    completion(std::move(response));
  });
}

std::string WatchedTransport::failure() const {
  const MutexLock lock(record_->mutex);
  return record_->failure;
}

}  // namespace tern
