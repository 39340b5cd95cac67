#include "TernCoreKit/c/detail/HubJob.hpp"

namespace tern::inline v5::detail {

void HubJob::start() {
  if (!hasEnded_ && !attempt([this] { begin(); })) fail(noMemoryForJob());
}

void HubJob::fail(const TernError& error) {
  if (hasEnded_.exchange(true)) return;
  tellError(error);
  source_.next();
}

TernError HubJob::cannotBeHad(const std::string& what) const {
  const std::string failure = source_.transport->failure();
  return TernError::initWithErrorType(TernErrorTypeConnection,
                                      source_.hub->hostURL() + ": " + what + " cannot be had" +
                                          (failure.empty() ? "" : ": " + failure));
}

TernError HubJob::noMemoryForJob() {
  return TernError::initWithErrorType(TernErrorTypeUndefined, outOfMemory, outOfMemory);
}

}  // namespace tern::detail
