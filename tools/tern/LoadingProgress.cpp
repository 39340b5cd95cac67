#include "tools/tern/LoadingProgress.hpp"

#include <unistd.h>

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <string>

#include "tools/tern/Output.hpp"

namespace tern::command {

namespace {

constexpr const char* eraseLine = "\r\x1B[K";

void show(const std::stop_token& stop, int descriptor, std::chrono::milliseconds step) {
  std::mutex mutex;
  std::condition_variable_any ended;
  std::unique_lock lock(mutex);
  const auto hasEnded = [&] { return stop.stop_requested(); };
  int steps = 1;
  for (; !ended.wait_for(lock, stop, step, hasEnded); ++steps) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(steps * step).count();
    Output(descriptor).write(eraseLine + ("Loading, " + std::to_string(seconds)) + " s ");
  }
  if (steps > 1) Output(descriptor).write(eraseLine);
}

}  // namespace

LoadingProgress::LoadingProgress(int descriptor, std::chrono::milliseconds step) {
  if (isatty(descriptor) == 0) return;
  thread_ = std::jthread(
      [descriptor, step](const std::stop_token& stop) { show(stop, descriptor, step); });
}

}  // namespace tern::command
