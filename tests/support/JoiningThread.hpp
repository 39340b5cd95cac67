// A thread that is waited for before it goes: std::jthread for the standard libraries that have
// none.
//
// Ownership: its own. Threads: as std::thread. Fails: never.
//
//   { std::vector<JoiningThread> threads; threads.emplace_back(work); }
#pragma once

#include <thread>
#include <utility>

namespace tern::test {

class JoiningThread {
 public:
  template <class Work>
  explicit JoiningThread(Work work) : thread_(std::move(work)) {}
  ~JoiningThread() {
    if (thread_.joinable()) thread_.join();
  }
  JoiningThread(JoiningThread&&) = default;
  JoiningThread& operator=(JoiningThread&&) = delete;

 private:
  std::thread thread_;
};

}  // namespace tern::test
