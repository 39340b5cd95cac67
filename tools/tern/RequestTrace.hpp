// Shows each request notification of the library as a line {"event":NAME,"payload":{...}}.
//
// Ownership: the descriptor stays the caller's. Threads: one object at a time; notifications may
// come from any. Fails: never.
#pragma once

#include "TernCoreKit/platform/Notifications.hpp"

namespace tern::command {

class RequestTrace {
 public:
  explicit RequestTrace(int descriptor);
  ~RequestTrace() { removeObserver(observer_); }
  RequestTrace(const RequestTrace&) = delete;
  RequestTrace& operator=(const RequestTrace&) = delete;

 private:
  const ObserverToken observer_;
};

}  // namespace tern::command
