// Takes the bytes that a callback gives while it is called.
//
//   const SinkHandle given(maximumDocumentBytes);
//   callback(context, path, given.handle());
//   const auto texts = given.taken();
//
// Ownership: a handle's bytes are its own. Threads: bytes may come from any. Fails: by
// std::bad_alloc; bytes beyond the bound are refused.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/c/detail/Handles.hpp"
#include "TernCoreKit/c/tern.h"
#include "TernCoreKit/platform/Mutex.hpp"

namespace tern::inline v5::detail {

class Sink {
 public:
  explicit Sink(std::size_t mostBytes) : mostBytes_(mostBytes) {}

  // False when these would be too many.
  bool give(std::string_view bytes);
  // What each call gave; nothing where some of it was lost for want of memory.
  std::vector<std::string> takeEach();
  // Whether something was refused.
  bool isOverfull();

 private:
  const std::size_t mostBytes_;
  Mutex mutex_;
  std::vector<std::string> given_ TERN_GUARDED_BY(mutex_);
  std::size_t bytes_ TERN_GUARDED_BY(mutex_) = 0;
  bool isIncomplete_ TERN_GUARDED_BY(mutex_) = false;
  bool isOverfull_ TERN_GUARDED_BY(mutex_) = false;
};

// A sink as long as it can be given something.
class SinkHandle {
 public:
  explicit SinkHandle(std::size_t mostBytes)
      : sink_(std::make_shared<Sink>(mostBytes)), number_(handles().add(sink_)) {}
  ~SinkHandle() { handles().take<Sink>(number_); }
  SinkHandle(const SinkHandle&) = delete;
  SinkHandle& operator=(const SinkHandle&) = delete;

  tern_sink* handle() const { return handleTo<tern_sink>(number_); }
  // Nothing is taken from here on.
  std::vector<std::string> taken() const {
    handles().take<Sink>(number_);
    return sink_->takeEach();
  }
  bool isOverfull() const { return sink_->isOverfull(); }

 private:
  const std::shared_ptr<Sink> sink_;
  const std::uintptr_t number_;
};

// One text of what several calls gave. REQUIRES: there is one.
std::string joinedPieces(std::vector<std::string> pieces);

}  // namespace tern::detail
