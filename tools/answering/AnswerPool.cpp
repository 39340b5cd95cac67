#include "tools/answering/AnswerPool.hpp"

#include <system_error>
#include <utility>

namespace tern::answering {

// But for the settings, read and written under the pool's lock only.
class AnswerPool::Asker {
 public:
  explicit Asker(AskerSettings asked) : settings(std::move(asked)), requests(settings.bounds) {}

  const AskerSettings settings;
  OrderedRequests requests;
  std::shared_ptr<Asker> next;
  bool isInLine = false;
  bool hasLeft = false;
};

AnswerPool::AnswerPool(unsigned threadCount) { startThreads(threadCount); }

void AnswerPool::startThreads(unsigned count) {
  threads_.reserve(count);
  try {
    while (threads_.size() < count) threads_.emplace_back([this] { work(); });
  } catch (const std::system_error&) {
    if (threads_.empty()) throw;
  }
}

AnswerPool::~AnswerPool() {
  {
    const MutexLock lock(mutex_);
    isEnding_ = true;
  }
  hasWork_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

std::shared_ptr<AnswerPool::Asker> AnswerPool::admit(AskerSettings settings) {
  return std::make_shared<Asker>(std::move(settings));
}

bool AnswerPool::hasRoom(const Asker& asker) {
  const MutexLock lock(mutex_);
  return asker.requests.hasRoom();
}

bool AnswerPool::waitForRoom(const Asker& asker) {
  MutexLock lock(mutex_);
  if (!asker.requests.hasRoom()) {
    while (!asker.hasLeft && !asker.requests.isHalfEmpty()) hasRoom_.wait(lock);
  }
  return !asker.hasLeft;
}

void AnswerPool::ask(const std::shared_ptr<Asker>& asker, std::string request, bool isAlone) {
  const MutexLock lock(mutex_);
  asker->requests.add(std::move(request), isAlone);
  queue(asker);
}

std::string AnswerPool::take(const std::shared_ptr<Asker>& asker) {
  const MutexLock lock(mutex_);
  std::string answers = asker->requests.take();
  queue(asker);
  if (asker->requests.isHalfEmpty()) hasRoom_.notify_all();
  return answers;
}

bool AnswerPool::isDone(const Asker& asker) {
  const MutexLock lock(mutex_);
  return asker.requests.isEmpty();
}

void AnswerPool::leave(Asker& asker) {
  const MutexLock lock(mutex_);
  asker.hasLeft = true;
  asker.requests.drop();
  hasRoom_.notify_all();
}

void AnswerPool::work() {
  MutexLock lock(mutex_);
  for (;;) {
    while (first_ == nullptr && !isEnding_) hasWork_.wait(lock);
    if (first_ == nullptr) return;
    const std::shared_ptr<Asker> asker = nextInLine();
    // It may have left while it stood in the line.
    if (!asker->requests.canBegin()) continue;
    OrderedRequests::Begun begun = asker->requests.begin();
    queue(asker);
    lock.unlock();
    std::string answer = asker->settings.answer(std::move(begun.request));
    lock.lock();
    const bool hasAnswers = asker->requests.end(begun.number, std::move(answer));
    queue(asker);
    if (!hasAnswers) continue;
    lock.unlock();
    asker->settings.onAnswers();
    lock.lock();
  }
}

void AnswerPool::queue(const std::shared_ptr<Asker>& asker) {
  if (asker->isInLine || !asker->requests.canBegin()) return;
  asker->isInLine = true;
  (last_ != nullptr ? last_->next : first_) = asker;
  last_ = asker.get();
  hasWork_.notify_one();
}

std::shared_ptr<AnswerPool::Asker> AnswerPool::nextInLine() {
  std::shared_ptr<Asker> asker = std::move(first_);
  first_ = std::move(asker->next);
  if (first_ == nullptr) last_ = nullptr;
  asker->isInLine = false;
  return asker;
}

}  // namespace tern::answering
