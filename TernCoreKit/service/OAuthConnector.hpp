#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Clock.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/service/HTTPClient.hpp"

namespace tern::inline v5 {

/// Keeps the credentials of the process, obtains a bearer token for them from the service, and puts
/// it into the headers of requests.
///
/// A token counts as valid for as long as the service said when it gave it, to the last second, by
/// the wall clock. Two calls that find it expired at once each ask for a new one; the answer that
/// comes last stays. After `logout` the old time still runs: until it is over, or new credentials
/// are set, a token is neither there nor asked for.
///
/// Ownership: the shared one lives until the process ends; another may be destroyed while its
/// requests are under way.
/// Threads: any. A completion is called exactly once and outside every lock: on a thread of the
/// HTTP transport when a token had to be asked for, else on the caller's before the call returns.
/// Fails: through the completion's TernError. No error holds the secret or a token, but for a text
/// of the service's own ("message"), which is handed on as it came.
///
///     const auto connector = OAuthConnector::sharedInstance();
///     connector->setCredentialsWithClientId(id, secret, "https://maps.example.com");
///     connector->getAccessTokenInHeader({}, [](std::optional<TernError> error, Value headers) {
///       headers["Authorization"].text();  // "Bearer ..."
///     });
class TERN_API OAuthConnector {
 public:
  /// The token is absent with an error.
  using TokenCompletion =
      std::function<void(std::optional<TernError> error, std::optional<std::string> token)>;
  /// The headers are a map, absent with an error.
  using HeaderCompletion = std::function<void(std::optional<TernError> error, Value headers)>;

  /// The one that the hubs of the process share.
  static std::shared_ptr<OAuthConnector> sharedInstance();

  /// One of its own, without credentials.
  OAuthConnector();
  ~OAuthConnector();
  OAuthConnector(const OAuthConnector&) = delete;
  OAuthConnector& operator=(const OAuthConnector&) = delete;

  /// The path that a token is asked of, behind the API host.
  static std::string_view tokenAPIEndpoint();

  /// The current token counts as expired from here on. When one of the three is empty, everything
  /// else stays as it was.
  void setCredentialsWithClientId(std::string_view clientId, std::string_view clientSecret,
                                  std::string_view apiUrl);

  /// Asks the service for a token, valid one or not, and keeps it.
  void requestToken(TokenCompletion completion);
  /// Gives the headers back with a valid "Authorization".
  void getAccessTokenInHeader(Value headers, HeaderCompletion completion);
  /// The same with a given token; headers that are no map count as none.
  static void createTokenHeader(Value headers, const std::optional<std::string>& token,
                                const HeaderCompletion& completion);

  /// Whether the time of the token is over; true before the first.
  bool isExpired() const;
  /// The token was received now and is valid for so many seconds.
  void setExpirationTime(double seconds);
  /// Forgets the token and the API host, and nothing else.
  void logout();

  /// The client that asks for tokens; null before there are credentials.
  std::shared_ptr<HTTPClient> http() const;
  /// Replaces it.
  void setHttp(std::shared_ptr<HTTPClient> http);
  /// The API host, for the application alone: the library sets none, and `logout` forgets it.
  std::optional<std::string> api() const;
  /// Replaces it.
  void setApi(std::optional<std::string> api);
  /// The token, whether its time is over or not.
  std::optional<std::string> accessToken() const;
  /// Replaces it; its time stays.
  void setAccessToken(std::optional<std::string> token);
  /// Seconds; 0 when there is no token.
  double expiryTime() const;
  /// Replaces them.
  void setExpiryTime(double seconds);
  /// When the token was received; absent for one that counts as expired whatever its time.
  std::optional<WallTime> refreshTime() const;
  /// Replaces it.
  void setRefreshTime(std::optional<WallTime> time);
  /// The form that is posted for a token, secret included; absent without credentials.
  Value tokenRequestData() const;
  /// Replaces it.
  void setTokenRequestData(Value data);

 private:
  struct Fields;
  class Guarded;

  // Requests under way share it, so that they need no connector.
  const std::shared_ptr<Guarded> guarded_;
};

}  // namespace tern
