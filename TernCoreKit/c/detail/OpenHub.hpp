// What a handle to a hub stands for: a TernHub and the jobs that it does one after another.
//
// Ownership: shares hub and transport; jobs that are under way hold them too.
// Threads: any. Fails: opening and adding a job, by a Refusal or std::bad_alloc.
#pragma once

#include <deque>
#include <functional>
#include <memory>

#include "TernCoreKit/c/detail/HostTransport.hpp"
#include "TernCoreKit/c/detail/HubJob.hpp"
#include "TernCoreKit/c/detail/Options.hpp"
#include "TernCoreKit/platform/Mutex.hpp"

namespace tern::inline v5::detail {

class OpenHub : public std::enable_shared_from_this<OpenHub> {
 public:
  static std::shared_ptr<OpenHub> open(const Options& options);

  // The job is made of what it loads from, and begins when those before it have ended.
  using MakeJob = std::function<std::shared_ptr<HubJob>(JobSource)>;
  void add(const MakeJob& make);

  // Ends all jobs and requests.
  void close();

 private:
  void startNext();

  std::shared_ptr<TernHub> hub_;
  std::shared_ptr<WatchedTransport> transport_;
  // Null without a host that sends.
  std::shared_ptr<HostTransport> hostTransport_;

  Mutex mutex_;
  // The first one is under way.
  std::deque<std::shared_ptr<HubJob>> jobs_ TERN_GUARDED_BY(mutex_);
  bool isClosed_ TERN_GUARDED_BY(mutex_) = false;
};

}  // namespace tern::detail
