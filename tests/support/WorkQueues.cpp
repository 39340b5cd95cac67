#include "tests/support/WorkQueues.hpp"

#include <utility>

namespace tern::test {

bool OnDemandQueue::runNext() {
  if (tasks_.empty()) return false;
  const std::function<void()> task = std::move(tasks_.front());
  tasks_.pop_front();
  task();
  return true;
}

void OnDemandQueue::runAll() {
  while (runNext()) {
  }
}

}  // namespace tern::test
