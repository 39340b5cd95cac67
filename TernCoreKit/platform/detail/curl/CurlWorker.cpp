#include "TernCoreKit/platform/detail/curl/CurlWorker.hpp"

#include <algorithm>
#include <csignal>
#include <utility>

#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5::detail {
namespace {

// The number that browsers keep to is six for one host; a service has one host.
constexpr std::size_t mostTransfers = 16;

// Null when memory or descriptors are short.
CURLM* newMulti() {
  // Counts how often it is called, which may be from several threads at once.
  if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) return nullptr;
  CURLM* const multi = curl_multi_init();
  if (multi == nullptr) return nullptr;
  curl_multi_setopt(multi, CURLMOPT_MAXCONNECTS, long{mostTransfers});
  // libcurl hands out one that nobody can wake when it got no descriptors for that.
  if (curl_multi_wakeup(multi) == CURLM_OK) return multi;
  curl_multi_cleanup(multi);
  return nullptr;
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

CurlWorker::CurlWorker(HttpSettings settings) : settings_(std::move(settings)) {}

CurlWorker::~CurlWorker() { curl_multi_cleanup(multi_); }

void CurlWorker::send(HttpRequest request, HttpTransport::Completion completion) {
  Transfers made;
  // When it fails, it has taken neither.
  const bool isMade =
      attempt([&] { made.emplace_back(std::move(request), std::move(completion), settings_); });
  const CurlTransfer* const sent = isMade ? &made.front() : nullptr;
  Ending ending = Ending::no;
  {
    const MutexLock lock(mutex_);
    ending = ending_;
    if (isMade && ending == Ending::no && isRunning()) waiting_.splice(waiting_.end(), made);
  }
  // A thread that nobody can wake would come to it when something else moves, or in a minute.
  if (isMade && made.empty() && curl_multi_wakeup(multi_) != CURLM_OK) made = takenBack(sent);
  if (ending == Ending::dropping || (isMade && made.empty())) return;
  if (isMade) {
    made.front().fail("The request could not be started");
    made.front().complete();
  } else {
    completion({.error = outOfMemory});
  }
}

CurlWorker::Transfers CurlWorker::takenBack(const CurlTransfer* sent) {
  Transfers taken;
  const MutexLock lock(mutex_);
  const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                  [sent](const CurlTransfer& each) { return &each == sent; });
  if (found != waiting_.end()) taken.splice(taken.end(), waiting_, found);
  return taken;
}

bool CurlWorker::isRunning() {
  if (thread_.joinable()) return true;
  if (multi_ == nullptr) multi_ = newMulti();
  if (multi_ == nullptr) return false;
  const BlockedSignals blockedSignals;
  std::thread started;
  attempt([&] { started = std::thread([self = shared_from_this()] { self->work(); }); });
  thread_.swap(started);
  return thread_.joinable();
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
    for (Transfers next = takeWaiting(); !next.empty(); next = takeWaiting()) {
      start(std::move(next));
    }
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
  Transfers taken;
  const MutexLock lock(mutex_);
  if (!waiting_.empty() && transfers_.size() < mostTransfers) {
    taken.splice(taken.end(), waiting_, waiting_.begin());
  }
  return taken;
}

void CurlWorker::start(Transfers one) {
  CurlTransfer& transfer = one.front();
  if (transfer.prepare() && isAdded(transfer)) {
    transfers_.splice(transfers_.end(), one);
  } else {
    complete(transfer);
  }
}

bool CurlWorker::isAdded(CurlTransfer& transfer) {
  const bool isAdded = curl_multi_add_handle(multi_, transfer.handle()) == CURLM_OK;
  if (!isAdded) transfer.fail(outOfMemory);
  return isAdded;
}

bool CurlWorker::finishDone() {
  bool isAnyDone = false;
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
    isAnyDone = true;
    // The message goes with the handle.
    const CURLcode result = message->data.result;
    const auto transfer = std::find_if(
        transfers_.begin(), transfers_.end(),
        [&](const CurlTransfer& each) { return each.handle() == message->easy_handle; });
    curl_multi_remove_handle(multi_, transfer->handle());
    if (transfer->goesOn(result) && isAdded(*transfer)) continue;
    complete(take(transfer).front());
  }
  return isAnyDone;
}

bool CurlWorker::finishStalled() {
  const auto now = std::chrono::steady_clock::now();
  Transfers stalled;
  for (auto next = transfers_.begin(); next != transfers_.end();) {
    const auto transfer = next++;
    if (transfer->stallsAt() <= now) stalled.splice(stalled.end(), transfers_, transfer);
  }
  for (CurlTransfer& transfer : stalled) {
    curl_multi_remove_handle(multi_, transfer.handle());
    transfer.fail("The request timed out");
    complete(transfer);
  }
  return !stalled.empty();
}

// How long there is nothing to do unless something moves.
int CurlWorker::milliseconds() const {
  auto wait = std::chrono::milliseconds(60'000);
  const auto now = std::chrono::steady_clock::now();
  for (const CurlTransfer& transfer : transfers_) {
    wait = std::min(wait, std::chrono::ceil<std::chrono::milliseconds>(transfer.stallsAt() - now));
  }
  return static_cast<int>(std::max(wait, std::chrono::milliseconds(0)).count());
}

CurlWorker::Transfers CurlWorker::take(Transfers::iterator transfer) {
  Transfers taken;
  taken.splice(taken.end(), transfers_, transfer);
  return taken;
}

void CurlWorker::complete(CurlTransfer& transfer) {
  if (ending() != Ending::dropping) attempt([&] { transfer.complete(); });
}

void CurlWorker::finishAll() {
  for (const CurlTransfer& transfer : transfers_) {
    curl_multi_remove_handle(multi_, transfer.handle());
  }
  {
    const MutexLock lock(mutex_);
    transfers_.splice(transfers_.end(), waiting_);
  }
  for (CurlTransfer& transfer : transfers_) {
    transfer.fail("The request was cancelled");
    complete(transfer);
  }
  transfers_.clear();
}

}  // namespace tern::detail
