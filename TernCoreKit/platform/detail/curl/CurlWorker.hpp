// The thread that all requests of one transport run on, and what it works with.
//
// Ownership: shared by the transport and the thread; the thread starts with the first request.
// Threads: `send` and `end` may be called from any; the rest is the thread's own.
// Fails: by the response's error.
#pragma once

#include <curl/curl.h>

#include <list>
#include <memory>
#include <thread>

#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/detail/curl/CurlTransfer.hpp"

namespace tern::inline v5::detail {

class CurlWorker : public std::enable_shared_from_this<CurlWorker> {
 public:
  // What becomes of requests at the end: an answer with an error, or nothing.
  enum class Ending { no, answering, dropping };

  explicit CurlWorker(HttpSettings settings);
  ~CurlWorker();
  CurlWorker(const CurlWorker&) = delete;
  CurlWorker& operator=(const CurlWorker&) = delete;

  void send(HttpRequest request, HttpTransport::Completion completion);
  // Ends the thread and waits for it, unless called on it. REQUIRES: not `no`.
  void end(Ending ending);

 private:
  // Its elements stay where they are when they move from one to another, and need no memory then.
  using Transfers = std::list<CurlTransfer>;

  // None when the thread has it already.
  Transfers takenBack(const CurlTransfer* sent);
  bool isRunning() TERN_REQUIRES(mutex_);
  void work();
  Ending ending();
  // The one that waits longest, when another may be under way.
  Transfers takeWaiting();
  void start(Transfers one);
  bool isAdded(CurlTransfer& transfer);
  bool finishDone();
  bool finishStalled();
  int milliseconds() const;
  Transfers take(Transfers::iterator transfer);
  void complete(CurlTransfer& transfer);
  void finishAll();

  const HttpSettings settings_;
  // Made with the thread, and as often as it takes: where descriptors are short there is none.
  CURLM* multi_ = nullptr;

  // The thread's own.
  Transfers transfers_;

  Mutex mutex_;
  Transfers waiting_ TERN_GUARDED_BY(mutex_);
  Ending ending_ TERN_GUARDED_BY(mutex_) = Ending::no;
  std::thread thread_ TERN_GUARDED_BY(mutex_);
};

}  // namespace tern::detail
