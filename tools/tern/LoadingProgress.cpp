#include "tools/tern/LoadingProgress.hpp"

#include <unistd.h>

#include <string>
#include <system_error>

#include "tools/tern/Output.hpp"

namespace tern::command {

namespace {

constexpr const char* eraseLine = "\r\x1B[K";

}  // namespace

LoadingProgress::LoadingProgress(int descriptor, std::chrono::milliseconds step) {
  if (isatty(descriptor) == 0) return;
  try {
    thread_ = std::thread([this, descriptor, step] { show(descriptor, step); });
  } catch (const std::system_error&) {
    // What is loaded is worth more than to be told of it.
  }
}

LoadingProgress::~LoadingProgress() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    hasEnded_ = true;
  }
  ends_.notify_one();
  thread_.join();
}

void LoadingProgress::show(int descriptor, std::chrono::milliseconds step) {
  std::unique_lock lock(mutex_);
  int steps = 1;
  for (; !ends_.wait_for(lock, step, [this] { return hasEnded_; }); ++steps) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(steps * step).count();
    Output(descriptor).write(eraseLine + ("Loading, " + std::to_string(seconds)) + " s ");
  }
  if (steps > 1) Output(descriptor).write(eraseLine);
}

}  // namespace tern::command
