// Shows what the library says while data is loaded, and silences it afterwards, when each answer
// says itself what it found. A broken document can give a line for every record, so only the first
// lines are shown, and how many more there were.
//
// Ownership: takes the place of the process's log sink for good; the descriptor stays the caller's.
// Threads: one object at a time; lines may come from any thread. Fails: never.
//
//   { LoadingLog log(STDERR_FILENO); load(); }
#pragma once

#include <atomic>
#include <memory>

namespace tern::command {

class LoadingLog {
 public:
  static constexpr int linesShown = 10;

  explicit LoadingLog(int descriptor);
  ~LoadingLog();
  LoadingLog(const LoadingLog&) = delete;
  LoadingLog& operator=(const LoadingLog&) = delete;

 private:
  int descriptor_;
  // Shared with the sink, which a slow thread may still be in when this is gone.
  std::shared_ptr<std::atomic<int>> lines_ = std::make_shared<std::atomic<int>>(0);
};

}  // namespace tern::command
