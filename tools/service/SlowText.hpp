// A text that takes a while to make: made once, when it is first asked for, on a thread of its own;
// who asks for it waits without keeping a thread.
//
//   SlowText findings([] { return checked(); });
//   return ServedAnswer{.stream = findings.stream(request.wake)};
//
// Ownership: owns its thread; the destructor waits for it. A stream may outlive it. Threads: any;
// the function is called on the thread that makes the text. Fails: where there is no thread, by
// std::system_error; the next one to ask tries again. REQUIRES: the function throws nothing.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "TernCoreKit/platform/Mutex.hpp"
#include "tools/service/BodyStream.hpp"

namespace tern::service {

class SlowText {
 public:
  explicit SlowText(std::function<std::string()> make);
  ~SlowText();
  SlowText(const SlowText&) = delete;
  SlowText& operator=(const SlowText&) = delete;

  // The text; `wake` is called when there is more to read of it, on whatever thread.
  std::shared_ptr<BodyStream> stream(std::function<void()> wake);

 private:
  class Text;
  class Stream;

  const std::function<std::string()> make_;
  const std::shared_ptr<Text> text_;
  Mutex mutex_;
  std::thread maker_ TERN_GUARDED_BY(mutex_);
};

}  // namespace tern::service
