#include "TernCoreKit/platform/Log.hpp"

#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace tern {
namespace {

// Guarded by `mutex`; a caller keeps the sink alive by its own pointer while it writes.
struct Slot {
  std::mutex mutex;
  std::shared_ptr<const LogSink> sink;
};

// Never destroyed: objects that end after `main` may still log.
Slot& slot() {
  static Slot& slot = *new Slot;
  return slot;
}

void writeToStandardError(std::string_view line) {
  // One call, so that lines of several threads do not mix.
  const std::string text = std::string(line) + '\n';
  std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace

void setLogSink(LogSink sink) {
  auto next = sink ? std::make_shared<const LogSink>(std::move(sink)) : nullptr;
  // The old sink goes outside the lock: what it owns may log when it ends.
  const std::lock_guard lock(slot().mutex);
  slot().sink.swap(next);
}

void logLine(std::string_view line) {
  std::shared_ptr<const LogSink> sink;
  {
    const std::lock_guard lock(slot().mutex);
    sink = slot().sink;
  }
  if (sink != nullptr) {
    (*sink)(line);
  } else {
    writeToStandardError(line);
  }
}

void logSdk(std::string_view text) { logLine("Tern SDK: " + std::string(text)); }

}  // namespace tern
