#include "TernCoreKit/platform/detail/curl/CurlWorker.hpp"

#include <algorithm>
#include <csignal>
#include <system_error>
#include <utility>

namespace tern::inline v5::detail {
namespace {

// The number that browsers keep to is six for one host; a service has one host.
constexpr std::size_t mostTransfers = 16;

CURLM* newMulti() {
  // Once in the process; it may be called from several threads at once.
  static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (ready != CURLE_OK) return nullptr;
  CURLM* const multi = curl_multi_init();
  if (multi != nullptr) curl_multi_setopt(multi, CURLMOPT_MAXCONNECTS, long{mostTransfers});
  return multi;
}

// A thread that starts meanwhile gets no signals: the application's handlers run on its own
// threads, and a connection that breaks while something is written is an error, not the end. Those
// of a fault in the thread itself stay, for an application that reports crashes.
class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t all;
    sigfillset(&all);
    for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT}) {
      sigdelset(&all, fault);
    }
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

 private:
  sigset_t before_;
};

}  // namespace

CurlWorker::CurlWorker(HttpSettings settings)
    : settings_(std::move(settings)), multi_(newMulti()) {}

CurlWorker::~CurlWorker() { curl_multi_cleanup(multi_); }

void CurlWorker::send(HttpRequest request, HttpTransport::Completion completion) {
  auto transfer =
      std::make_unique<CurlTransfer>(std::move(request), std::move(completion), settings_);
  Ending ending = Ending::no;
  {
    const MutexLock lock(mutex_);
    ending = ending_;
    if (ending == Ending::no && isRunning()) waiting_.push_back(std::move(transfer));
  }
  if (transfer == nullptr) {
    curl_multi_wakeup(multi_);
  } else if (ending != Ending::dropping) {
    transfer->fail("The request could not be started");
    transfer->complete();
  }
}

bool CurlWorker::isRunning() {
  if (multi_ == nullptr || thread_.joinable()) return multi_ != nullptr;
  const BlockedSignals blockedSignals;
  try {
    thread_ = std::thread([self = shared_from_this()] { self->work(); });
  } catch (const std::system_error&) {
    return false;
  }
  return true;
}

void CurlWorker::end(Ending ending) {
  std::thread thread;
  {
    const MutexLock lock(mutex_);
    ending_ = ending;
    thread.swap(thread_);
  }
  if (!thread.joinable()) return;
  curl_multi_wakeup(multi_);
  if (thread.get_id() != std::this_thread::get_id()) {
    thread.join();
  } else {
    thread.detach();
  }
}

void CurlWorker::work() {
  while (ending() == Ending::no) {
    for (std::unique_ptr<CurlTransfer>& transfer : takeWaiting()) start(std::move(transfer));
    int running = 0;
    curl_multi_perform(multi_, &running);
    const bool isAnyDone = finishDone();
    const bool isAnyStalled = finishStalled();
    // Whoever waited can start when others have ended.
    if (!isAnyDone && !isAnyStalled) curl_multi_poll(multi_, nullptr, 0, milliseconds(), nullptr);
  }
  finishAll();
}

CurlWorker::Ending CurlWorker::ending() {
  const MutexLock lock(mutex_);
  return ending_;
}

CurlWorker::Transfers CurlWorker::takeWaiting() {
  const MutexLock lock(mutex_);
  const auto count = std::min(waiting_.size(), mostTransfers - transfers_.size());
  const auto end = waiting_.begin() + static_cast<std::ptrdiff_t>(count);
  Transfers taken(std::make_move_iterator(waiting_.begin()), std::make_move_iterator(end));
  waiting_.erase(waiting_.begin(), end);
  return taken;
}

void CurlWorker::start(std::unique_ptr<CurlTransfer> transfer) {
  if (transfer->prepare()) {
    curl_multi_add_handle(multi_, transfer->handle());
    transfers_.push_back(std::move(transfer));
  } else {
    complete(*transfer);
  }
}

bool CurlWorker::finishDone() {
  bool isAnyDone = false;
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
    isAnyDone = true;
    // The message goes with the handle.
    const CURLcode result = message->data.result;
    CurlTransfer* transfer = nullptr;
    curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
    curl_multi_remove_handle(multi_, transfer->handle());
    if (transfer->goesOn(result)) {
      curl_multi_add_handle(multi_, transfer->handle());
    } else {
      complete(*take(*transfer));
    }
  }
  return isAnyDone;
}

bool CurlWorker::finishStalled() {
  const auto now = std::chrono::steady_clock::now();
  Transfers stalled;
  for (std::unique_ptr<CurlTransfer>& transfer : transfers_) {
    if (transfer->stallsAt() <= now) stalled.push_back(std::move(transfer));
  }
  std::erase(transfers_, nullptr);
  for (const std::unique_ptr<CurlTransfer>& transfer : stalled) {
    curl_multi_remove_handle(multi_, transfer->handle());
    transfer->fail("The request timed out");
    complete(*transfer);
  }
  return !stalled.empty();
}

// How long there is nothing to do unless something moves.
int CurlWorker::milliseconds() const {
  auto wait = std::chrono::milliseconds(60'000);
  const auto now = std::chrono::steady_clock::now();
  for (const std::unique_ptr<CurlTransfer>& transfer : transfers_) {
    wait = std::min(wait, std::chrono::ceil<std::chrono::milliseconds>(transfer->stallsAt() - now));
  }
  return static_cast<int>(std::max(wait, std::chrono::milliseconds(0)).count());
}

std::unique_ptr<CurlTransfer> CurlWorker::take(const CurlTransfer& transfer) {
  const auto found = std::find_if(transfers_.begin(), transfers_.end(),
                                  [&](const auto& other) { return other.get() == &transfer; });
  std::unique_ptr<CurlTransfer> taken = std::move(*found);
  transfers_.erase(found);
  return taken;
}

void CurlWorker::complete(CurlTransfer& transfer) {
  if (ending() != Ending::dropping) transfer.complete();
}

void CurlWorker::finishAll() {
  for (const std::unique_ptr<CurlTransfer>& transfer : transfers_) {
    curl_multi_remove_handle(multi_, transfer->handle());
  }
  {
    const MutexLock lock(mutex_);
    std::move(waiting_.begin(), waiting_.end(), std::back_inserter(transfers_));
    waiting_.clear();
  }
  for (const std::unique_ptr<CurlTransfer>& transfer : transfers_) {
    transfer->fail("The request was cancelled");
    complete(*transfer);
  }
  transfers_.clear();
}

}  // namespace tern::detail
