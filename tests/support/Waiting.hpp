// Waits for other threads that do not last for ever.
//
//   std::promise<int> status;
//   transport.send(request, [&](HttpResponse response) { status.set_value(response.status); });
//   EXPECT_EQ(await(status, "the answer"), 200);
//   awaitUntil([&] { return venue.expired(); }, "the release of the venue");
//
// Threads: any. Fails: what does not come within `longestWait` is named and ends the process, since
// another thread may still use what the test has on its stack.
#pragma once

#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <string_view>
#include <thread>

namespace tern::test {

// Far more than anything takes, on a busy machine and under a sanitizer too.
inline constexpr std::chrono::seconds longestWait{120};

[[noreturn]] void giveUp(std::string_view what);

template <class T>
T await(std::future<T> future, std::string_view what) {
  if (future.wait_for(longestWait) != std::future_status::ready) giveUp(what);
  return future.get();
}

// REQUIRES: nobody has taken the promise's future.
template <class T>
T await(std::promise<T>& promise, std::string_view what) {
  return await(promise.get_future(), what);
}

template <class Condition>
void awaitUntil(Condition isTrue, std::string_view what) {
  const auto end = std::chrono::steady_clock::now() + longestWait;
  while (!isTrue()) {
    if (std::chrono::steady_clock::now() > end) giveUp(what);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

// The same where each change is announced. REQUIRES: the lock is held.
template <class Condition>
void awaitUntil(std::condition_variable& changed, std::unique_lock<std::mutex>& lock,
                Condition isTrue, std::string_view what) {
  if (!changed.wait_for(lock, longestWait, isTrue)) giveUp(what);
}

}  // namespace tern::test
