#include "TernCoreKit/service/OAuthConnector.hpp"

#include <chrono>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/platform/detail/common/Immortal.hpp"
#include "TernCoreKit/service/detail/OutOfMemory.hpp"

namespace tern::inline v5 {

struct OAuthConnector::Fields {
  std::shared_ptr<HTTPClient> http;
  std::optional<std::string> api;
  std::optional<std::string> accessToken;
  double expiryTime = 0;  // seconds
  std::optional<WallTime> refreshTime;
  Value tokenRequestData;
};

class OAuthConnector::Guarded {
 public:
  // Reads or changes the fields; no other call does so meanwhile.
  template <class Use>
  auto with(Use use) {
    const MutexLock lock(mutex_);
    return use(fields_);
  }

 private:
  Mutex mutex_;
  Fields fields_ TERN_GUARDED_BY(mutex_);
};

namespace {

TernError accessDenied(std::string_view message, std::string description) {
  return TernError::initWithErrorType(TernErrorTypeAccessDenied, std::string(message),
                                      std::move(description));
}

TernError noToken(std::string description) {
  return accessDenied("Could not request access token", std::move(description));
}

std::string refusal(const Value& answer) {
  const Value* const message = answer.find("message");
  return message != nullptr ? message->printed()
                            : "Request did not return access_token or expiry_time";
}

std::optional<std::string> textOf(const Value& value) {
  if (!value.isText()) return std::nullopt;
  return std::string(value.text());
}

// A number, or the decimal text of one; 0 for anything else.
double secondsIn(const Value& value) {
  if (!value.isText()) return value.number();
  const JsonResult read = decodeJson(std::string(value.text()));
  return read.error ? 0 : read.value.number();
}

bool isTokenExpired(double expiryTime, std::optional<WallTime> refreshTime, WallTime now) {
  if (expiryTime == 0 || !refreshTime.has_value()) return true;
  return std::chrono::duration<double>(now - *refreshTime).count() >= expiryTime;
}

Value withToken(Value headers, const std::string& token) {
  if (!headers.isMap()) headers = Value::map();
  headers.set("Authorization", "Bearer " + token);
  return headers;
}

// Takes the service's answer in and hands the token on.
template <class Guarded>
void takeToken(Guarded& guarded, std::optional<std::string> error, const Value& answer,
               const detail::Kept<OAuthConnector::TokenCompletion>& completion) {
  const Value* const token = answer.find("access_token");
  const Value* const seconds = answer.find("expires_in");
  if (error.has_value()) return completion(noToken(std::move(*error)), std::nullopt);
  if (token == nullptr || seconds == nullptr) {
    return completion(noToken(refusal(answer)), std::nullopt);
  }
  // What needs memory comes before anything changes.
  const double expiryTime = secondsIn(*seconds);
  auto kept = textOf(*token);
  auto handedOn = kept;
  guarded.with([&, now = wallTime()](auto& fields) {
    fields.expiryTime = expiryTime;
    fields.refreshTime = now;
    fields.accessToken.swap(kept);
  });
  completion(std::nullopt, std::move(handedOn));
}

}  // namespace

OAuthConnector::OAuthConnector() : guarded_(std::make_shared<Guarded>()) {}
OAuthConnector::~OAuthConnector() = default;

std::shared_ptr<OAuthConnector> OAuthConnector::sharedInstance() {
  // Never destroyed: other static objects may use it until the very end.
  static const detail::Immortal instance{std::make_shared<OAuthConnector>()};
  return instance.value;
}

std::string_view OAuthConnector::tokenAPIEndpoint() { return "/QRVS/api/auth/token"; }

void OAuthConnector::setCredentialsWithClientId(std::string_view clientId,
                                                std::string_view clientSecret,
                                                std::string_view apiUrl) {
  const bool isComplete = !clientId.empty() && !clientSecret.empty() && !apiUrl.empty();
  auto http = isComplete ? HTTPClient::initWithHostURL(std::string(apiUrl)) : nullptr;
  Value parameters = Value::map({{"grant_type", "client_credentials"},
                                 {"scope", "sdk.read"},
                                 {"client_id", clientId},
                                 {"client_secret", clientSecret}});
  guarded_->with([&](Fields& fields) {
    fields.refreshTime.reset();
    if (!isComplete) return;
    fields.http = std::move(http);
    fields.tokenRequestData = std::move(parameters);
  });
}

void OAuthConnector::requestToken(TokenCompletion completion) {
  const auto fail = [](const auto& ended) { ended(detail::outOfMemoryError(), std::nullopt); };
  const auto steps = [&](const detail::Kept<TokenCompletion>& kept) {
    const auto [http, parameters] = guarded_->with(
        [](const Fields& fields) { return std::pair(fields.http, fields.tokenRequestData); });
    if (parameters.isAbsent() || http == nullptr) {
      return kept(accessDenied("Please Authenticate",
                               "Please authenticate with client_id and client_secret before "
                               "requesting access token"),
                  std::nullopt);
    }
    const Value headers = Value::map(
        {{"Content-Type", "application/x-www-form-urlencoded"}, {"Accept", "application/json"}});
    http->POST(tokenAPIEndpoint(), parameters, headers,
               [guarded = guarded_, kept, fail](std::optional<std::string> error,
                                                std::int64_t /*status*/, const Value& answer) {
                 const auto take = [&] { takeToken(*guarded, std::move(error), answer, kept); };
                 if (!detail::attempt(take)) fail(kept);
               });
  };
  detail::attemptWith(std::move(completion), steps, fail);
}

void OAuthConnector::getAccessTokenInHeader(Value headers, HeaderCompletion completion) {
  const auto fail = [](const auto& ended) { ended(detail::outOfMemoryError(), Value()); };
  const auto steps = [&](const detail::Kept<HeaderCompletion>& kept) {
    const WallTime now = wallTime();
    // Both in one go: a token that is replaced in between would be judged by the other's time.
    const auto [isExpired, token] = guarded_->with([&](const Fields& fields) {
      return std::pair(isTokenExpired(fields.expiryTime, fields.refreshTime, now),
                       fields.accessToken);
    });
    if (!isExpired) return createTokenHeader(std::move(headers), token, kept);
    requestToken([headers = std::move(headers), kept, fail](
                     std::optional<TernError> error, const std::optional<std::string>& newToken) {
      if (error.has_value()) return kept(std::move(error), Value());
      const auto end = [&] { createTokenHeader(headers, newToken, kept); };
      if (!detail::attempt(end)) fail(kept);
    });
  };
  detail::attemptWith(std::move(completion), steps, fail);
}

void OAuthConnector::createTokenHeader(Value headers, const std::optional<std::string>& token,
                                       const HeaderCompletion& completion) {
  if (token.has_value() && !token->empty()) {
    completion(std::nullopt, withToken(std::move(headers), *token));
  } else {
    completion(TernError::initWithErrorType(TernErrorTypeIncorrectObjectType, std::nullopt,
                                            "Token is not in correct format"),
               {});
  }
}

bool OAuthConnector::isExpired() const {
  const WallTime now = wallTime();
  return guarded_->with([&](const Fields& fields) {
    return isTokenExpired(fields.expiryTime, fields.refreshTime, now);
  });
}

void OAuthConnector::setExpirationTime(double seconds) {
  guarded_->with([&, now = wallTime()](Fields& fields) {
    fields.expiryTime = seconds;
    fields.refreshTime = now;
  });
}

void OAuthConnector::logout() {
  guarded_->with([](Fields& fields) {
    fields.api.reset();
    fields.accessToken.reset();
  });
}

std::shared_ptr<HTTPClient> OAuthConnector::http() const {
  return guarded_->with([](const Fields& fields) { return fields.http; });
}

void OAuthConnector::setHttp(std::shared_ptr<HTTPClient> http) {
  guarded_->with([&](Fields& fields) { fields.http.swap(http); });
}

std::optional<std::string> OAuthConnector::api() const {
  return guarded_->with([](const Fields& fields) { return fields.api; });
}

void OAuthConnector::setApi(std::optional<std::string> api) {
  guarded_->with([&](Fields& fields) { fields.api.swap(api); });
}

std::optional<std::string> OAuthConnector::accessToken() const {
  return guarded_->with([](const Fields& fields) { return fields.accessToken; });
}

void OAuthConnector::setAccessToken(std::optional<std::string> token) {
  guarded_->with([&](Fields& fields) { fields.accessToken.swap(token); });
}

double OAuthConnector::expiryTime() const {
  return guarded_->with([](const Fields& fields) { return fields.expiryTime; });
}

void OAuthConnector::setExpiryTime(double seconds) {
  guarded_->with([&](Fields& fields) { fields.expiryTime = seconds; });
}

std::optional<WallTime> OAuthConnector::refreshTime() const {
  return guarded_->with([](const Fields& fields) { return fields.refreshTime; });
}

void OAuthConnector::setRefreshTime(std::optional<WallTime> time) {
  guarded_->with([&](Fields& fields) { fields.refreshTime = time; });
}

Value OAuthConnector::tokenRequestData() const {
  return guarded_->with([](const Fields& fields) { return fields.tokenRequestData; });
}

void OAuthConnector::setTokenRequestData(Value data) {
  guarded_->with([&](Fields& fields) { std::swap(fields.tokenRequestData, data); });
}

}  // namespace tern
