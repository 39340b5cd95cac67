// An HTTP transport that remembers the last failure of a service: no answer, the status 500, or a
// token that it did not give. These are what the library passes over when something is cached.
//
// Ownership: shares the transport that sends. Threads: any. Fails: as that one.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/Mutex.hpp"

namespace tern::command {

class WatchedTransport : public HttpTransport {
 public:
  explicit WatchedTransport(std::shared_ptr<HttpTransport> transport)
      : transport_(std::move(transport)) {}

  void send(HttpRequest request, Completion completion) override;

  // In words; empty as long as there was none.
  std::string failure() const;

 private:
  // Outlives the transport when an answer comes late.
  struct Record {
    Mutex mutex;
    std::string failure TERN_GUARDED_BY(mutex);
  };

  const std::shared_ptr<HttpTransport> transport_;
  const std::shared_ptr<Record> record_ = std::make_shared<Record>();
};

}  // namespace tern::command
