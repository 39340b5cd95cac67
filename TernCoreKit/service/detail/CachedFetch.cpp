#include "TernCoreKit/service/detail/CachedFetch.hpp"

#include <cstdint>
#include <utility>

#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/service/TernHub.hpp"
#include "TernCoreKit/service/detail/OutOfMemory.hpp"

namespace tern::inline v5::detail {

namespace {

constexpr std::int64_t notModified = 304;
constexpr std::int64_t internalServerError = 500;
constexpr std::int64_t noAnswer = 444;

std::optional<TernError> errorWithMessage(const Value& answer) {
  if (answer.find("message") == nullptr) return std::nullopt;
  return TernError::initWithErrorType(TernErrorTypeObjectNotFound, std::nullopt,
                                      "Data was not returned from server or local cache");
}

std::optional<TernError> errorOfCustomer(const Value& answer) {
  if (!answer.isMap()) return TernError::initWithErrorType(TernErrorTypeIncorrectJSON);
  return errorWithMessage(answer);
}

std::optional<TernError> errorOfFilled(const Value& answer) {
  if (answer.size() == 0) return TernError::initWithErrorType(TernErrorTypeIncorrectJSON);
  return errorOfCustomer(answer);
}

using KeptFinish = Kept<FinishFetch>;

void endOutOfMemory(const auto& finish) {
  finish(outOfMemoryError(), Value(), AnswerSource::service);
}

// One fetch under way, shared by the callbacks of its steps.
class CachedFetch : public std::enable_shared_from_this<CachedFetch> {
 public:
  CachedFetch(std::shared_ptr<TernHub> hub, const LoadRules& rules, std::string endpoint,
              KeptFinish finish)
      : hub_(std::move(hub)),
        rules_(rules),
        endpoint_(std::move(endpoint)),
        finish_(std::move(finish)) {}

  void run() {
    if (rules_.announcesStart) TernHub::startServerPluginResponseForApi(endpoint_);
    Value headers = Value::map();
    hub_->checkCachingWithEndPoint(endpoint_, [&](const std::optional<TernError>&, Value stamp) {
      hasStamp_ = !stamp.isAbsent();
      if (hasStamp_) headers.set("If-Modified-Since", std::move(stamp));
    });
    if (!hasStamp_) hub_->clearTemporaryCache();
    if (hasStamp_ && !hub_->autoCache()) return takeCached(AnswerSource::cacheUnasked);
    const auto auth = hub_->auth();
    if (auth == nullptr) return;
    auth->getAccessTokenInHeader(
        std::move(headers),
        [self = shared_from_this()](std::optional<TernError> error, const Value& headersWithToken) {
          self->goOn([&] { self->send(std::move(error), headersWithToken); });
        });
  }

 private:
  // A step on somebody else's thread; one that runs out of memory is the last.
  template <class Step>
  void goOn(Step step) {
    if (attempt(step)) return;
    hub_->clearTemporaryCache();
    endOutOfMemory(finish_);
  }

  void send(std::optional<TernError> tokenError, const Value& headers) {
    if (tokenError) {
      if (hasStamp_) return takeCached(AnswerSource::cacheInstead);
      return finish_(std::move(tokenError), Value(), AnswerSource::service);
    }
    if (rules_.announcesRequest) TernHub::startServerPluginResponseForApi(endpoint_);
    hub_->client()->GETWithOrigin(
        endpoint_, headers,
        [self = shared_from_this()](std::optional<std::string> error, std::int64_t status,
                                    Value answer, bool leftOrigin) {
          self->goOn(
              [&] { self->receive(std::move(error), status, std::move(answer), leftOrigin); });
        });
  }

  void receive(std::optional<std::string> errorText, std::int64_t status, Value answer,
               bool leftOrigin) {
    if (status == notModified || status == internalServerError || status == noAnswer) {
      return takeCached(AnswerSource::cacheInstead);
    }
    hub_->clearTemporaryCache();
    auto error = errorText ? connectionError(std::move(errorText)) : rules_.errorOf(answer);
    if (error) {
      if (rules_.announcesFailure) TernHub::failedServerPluginResponseForApi(endpoint_, error);
      return finish_(std::move(error), Value(), AnswerSource::service);
    }
    // What another host said is nothing to keep as the word of this one.
    if (leftOrigin) {
      logSdk("an answer that came by way of another host is not cached: " + endpoint_);
    } else {
      hub_->saveData(answer, endpoint_, [](const std::optional<TernError>&) {});
    }
    finish_(std::nullopt, std::move(answer), AnswerSource::service);
  }

  void takeCached(AnswerSource source) {
    finish_(std::nullopt, hub_->returnTemporaryCache(), source);
  }

  const std::shared_ptr<TernHub> hub_;
  const LoadRules& rules_;
  const std::string endpoint_;
  const KeptFinish finish_;
  bool hasStamp_ = false;
};

}  // namespace

TernError connectionError(std::optional<std::string> text) {
  return TernError::initWithErrorType(TernErrorTypeConnection, std::nullopt, std::move(text));
}

std::optional<TernError> errorOfAnswer(const Value& answer) {
  if (!answer.isMap()) return connectionError(std::nullopt);
  const Value* message = answer.find("message");
  if (message == nullptr) return std::nullopt;
  auto error = TernError::getErrorFromServerResponse(answer);
  // Without a status code nothing says what kind of error it is, but an error it is.
  return error ? std::move(error) : connectionError(message->printed());
}

const LoadRules customerRules{false, true, true, errorOfCustomer};
const LoadRules venueRules{true, true, true, errorOfAnswer};
const LoadRules buildingRules{true, false, true, errorOfAnswer};
const LoadRules quietRules{false, false, false, errorOfFilled};

void fetchCached(std::shared_ptr<TernHub> hub, const LoadRules& rules, std::string endpoint,
                 FinishFetch finish) {
  const auto steps = [&](const KeptFinish& kept) {
    std::make_shared<CachedFetch>(std::move(hub), rules, std::move(endpoint), kept)->run();
  };
  attemptWith(std::move(finish), steps, [](const auto& ended) { endOutOfMemory(ended); });
}

}  // namespace tern::detail
