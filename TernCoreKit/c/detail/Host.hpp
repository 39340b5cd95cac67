// The host application that the C interface was given, and the one of the process.
//
// Ownership: the context is released when nobody has the Host any more. Threads: any.
// Fails: setHost by std::bad_alloc, and then nothing changes.
#pragma once

#include <memory>

#include "TernCoreKit/c/tern.h"

namespace tern::inline v5::detail {

class Host {
 public:
  explicit Host(const tern_host& host) : callbacks_(host) {}
  ~Host() {
    if (isInPlace_ && callbacks_.release != nullptr) callbacks_.release(callbacks_.context);
  }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  const tern_host& callbacks() const { return callbacks_; }
  void* context() const { return callbacks_.context; }
  // From here on the context is the library's to release.
  void take() { isInPlace_ = true; }

 private:
  const tern_host callbacks_;
  bool isInPlace_ = false;
};

// Puts its services in the place of the process's; null brings the library's own back.
void setHost(const std::shared_ptr<Host>& host);
// Null when there is none.
std::shared_ptr<Host> currentHost();

}  // namespace tern::detail
