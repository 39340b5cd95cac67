#pragma once

#include <memory>
#include <string>
#include <utility>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/Mutex.hpp"

namespace tern::inline v5 {

/// An HTTP transport that remembers the last failure of a service: no answer, the status 500, or a
/// token that it did not give. These are what a hub passes over when something is cached.
///
/// Ownership: shares the transport that sends.
/// Threads: any.
/// Fails: as that one.
///
///     const auto watched = std::make_shared<WatchedTransport>(httpTransport());
///     ...
///     if (!watched->failure().empty()) ...
class TERN_API WatchedTransport : public HttpTransport {
 public:
  /// REQUIRES: the transport is not null.
  explicit WatchedTransport(std::shared_ptr<HttpTransport> transport)
      : transport_(std::move(transport)) {}

  /// As the transport that sends.
  void send(HttpRequest request, Completion completion) override;

  /// In words; empty as long as there was none.
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

}  // namespace tern
