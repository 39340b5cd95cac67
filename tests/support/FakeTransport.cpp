#include "tests/support/FakeTransport.hpp"

#include <future>
#include <utility>

#include "tests/support/Waiting.hpp"

namespace tern::test {

void FakeTransport::send(HttpRequest request, Completion completion) {
  {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
    if (!answer_) waiting_.push_back(std::exchange(completion, nullptr));
  }
  if (completion) completion(answer_(request));
}

std::vector<HttpRequest> FakeTransport::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

std::size_t FakeTransport::waiting() const {
  const std::lock_guard lock(mutex_);
  return waiting_.size();
}

void FakeTransport::answer(HttpResponse response) {
  std::unique_lock lock(mutex_);
  const Completion completion = std::move(waiting_.front());
  waiting_.pop_front();
  lock.unlock();
  completion(std::move(response));
}

void FakeTransport::answerAll(const HttpResponse& response) {
  while (waiting() > 0) answer(response);
}

HttpResponse exchange(HttpTransport& transport, HttpRequest request) {
  std::promise<HttpResponse> answer;
  transport.send(std::move(request),
                 [&](HttpResponse response) { answer.set_value(std::move(response)); });
  return await(answer, "the answer of a request");
}

}  // namespace tern::test
