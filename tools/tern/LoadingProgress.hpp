// Shows on a terminal that data is being loaded, once that has taken a while: one line, which says
// for how long and goes away at the end. What is no terminal is shown nothing.
//
// Ownership: the descriptor stays the caller's. Threads: writes from a thread of its own, which
// ends with the object. Fails: never.
//
//   { LoadingProgress progress(STDERR_FILENO); load(); }
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace tern::command {

class LoadingProgress {
 public:
  // Shows itself first after one step, then anew with each.
  explicit LoadingProgress(int descriptor,
                           std::chrono::milliseconds step = std::chrono::seconds(1));

  ~LoadingProgress();
  LoadingProgress(const LoadingProgress&) = delete;
  LoadingProgress& operator=(const LoadingProgress&) = delete;

 private:
  void show(int descriptor, std::chrono::milliseconds step);

  std::mutex mutex_;
  std::condition_variable ends_;
  bool hasEnded_ = false;  // guarded by mutex_
  std::thread thread_;
};

}  // namespace tern::command
