#include "TernCoreKit/c/detail/OpenHub.hpp"

#include <string>
#include <utility>

#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/service/HTTPClient.hpp"
#include "TernCoreKit/service/TernFileCaching.hpp"

namespace tern::inline v5::detail {

namespace {

TernError closedError() {
  return TernError::initWithErrorType(TernErrorTypeUndefined, "the hub was closed",
                                      "the hub was closed");
}

Value hubOptions(const Options& options) {
  Value made = Value::map({{"customerId", options.requiredInteger("customerId")},
                           {"host", options.requiredText("host")},
                           {"clientId", options.requiredText("clientId")},
                           {"clientSecret", options.requiredText("clientSecret")},
                           {"geoJSON", options.flag("geoJSON", false)},
                           {"autoReloadCache", options.flag("autoReloadCache", true)}});
  const std::string locale = options.text("locale");
  if (!locale.empty()) made.set("locale", locale);
  return made;
}

}  // namespace

std::shared_ptr<OpenHub> OpenHub::open(const Options& options) {
  const auto opened = std::make_shared<OpenHub>();
  const std::string folder = options.text("cacheFolder");
  opened->hub_ = TernHub::initCustomerWithDictionary(hubOptions(options));
  if (!folder.empty()) {
    opened->hub_->setCache(TernFileCaching::initWithVersion(std::string(TernHub::getSDKVersion()),
                                                            makeFileSystem(folder)));
  }
  const auto host = currentHost();
  if (host != nullptr && host->callbacks().http_send != nullptr) {
    opened->hostTransport_ = std::make_shared<HostTransport>(host);
  }
  const auto own = std::static_pointer_cast<HttpTransport>(opened->hostTransport_);
  opened->transport_ = std::make_shared<WatchedTransport>(own != nullptr ? own : httpTransport());
  opened->hub_->setClient(HTTPClient::initWithHostURL(opened->hub_->hostURL(), opened->transport_));
  // Graphs are built by the jobs, once for each venue.
  opened->hub_->setIsMultiActiveVenues(true);
  return opened;
}

void OpenHub::add(const MakeJob& make) {
  const auto next = [weak = weak_from_this()] {
    if (const auto kept = weak.lock()) kept->startNext();
  };
  const auto job = make({hub_, transport_, next});
  bool isFirst = false;
  bool isTooLate = false;
  {
    const MutexLock lock(mutex_);
    isTooLate = isClosed_;
    isFirst = jobs_.empty();
    if (!isTooLate) jobs_.push_back(job);
  }
  if (isTooLate) {
    job->fail(closedError());
  } else if (isFirst) {
    job->start();
  }
}

void OpenHub::startNext() {
  std::shared_ptr<HubJob> ended;
  std::shared_ptr<HubJob> job;
  {
    const MutexLock lock(mutex_);
    if (jobs_.empty()) return;
    ended = std::move(jobs_.front());
    jobs_.pop_front();
    if (!jobs_.empty()) job = jobs_.front();
  }
  if (job != nullptr) job->start();
}

void OpenHub::close() {
  std::deque<std::shared_ptr<HubJob>> jobs;
  {
    const MutexLock lock(mutex_);
    isClosed_ = true;
    jobs.swap(jobs_);
  }
  for (const auto& job : jobs) job->fail(closedError());
  if (hostTransport_ != nullptr) hostTransport_->end();
}

}  // namespace tern::detail
