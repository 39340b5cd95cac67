#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// Talks to the mapping service: sends a request to a path of its host and decodes the JSON answer.
/// No retries, no cache.
///
/// A completion gets three things:
///
///     error   what went wrong; absent when an answer came that could be decoded, or a 304
///     status  the HTTP status, or one of the client's own:
///                 0  memory ran out before the answer was there
///               405  "No request body provided": a form without parameters
///               409  the parameters cannot be written as JSON
///               444  the exchange ended without an HTTP status
///     answer  the decoded document, whatever the status; absent with an error and with a 304.
///             A service that answers as it should gives a map, but nobody has checked that.
///
/// A 500 is always an error: the text under "statusDesc", or "Internal Server Error" when there is
/// none.
///
/// Ownership: keeps its host; the client may be destroyed while its requests are under way.
/// Threads: any. A completion is called exactly once: on a thread of the HTTP transport, or on the
/// caller's before the call returns for 0, 405 and 409. Several requests end in any order.
/// Fails: through the completion only, also where memory runs out. REQUIRES: a completion throws
/// nothing.
///
///     const auto client = HTTPClient::initWithHostURL("https://maps.example.com");
///     client->GET("/venue/7", {}, [](auto error, std::int64_t status, Value answer) { ... });
class TERN_API HTTPClient {
 public:
  /// What a request ended with; the class comment says what each value means.
  using Completion =
      std::function<void(std::optional<std::string> error, std::int64_t status, Value answer)>;

  /// The same, with whether a redirect led to another host on the way: see HttpResponse.
  using OriginCompletion = std::function<void(std::optional<std::string> error, std::int64_t status,
                                              Value answer, bool leftOrigin)>;

  /// Scheme and host, with a port or base path where there is one, and no "/" at the end. Without a
  /// transport: the process's, at each request.
  static std::shared_ptr<HTTPClient> initWithHostURL(
      std::string hostURL, std::shared_ptr<HttpTransport> transport = nullptr);

  /// The host that paths are put behind.
  const std::string& hostURL() const { return hostURL_; }

  /// Paths begin with "/" and come without escapes: the whole URL is percent-encoded, "%" included.
  /// Headers and parameters are maps, whose values are sent as they print; anything else counts as
  /// empty headers or missing parameters.
  void GET(std::string_view path, const Value& headers, Completion completion) const;
  /// As GET, for who keeps the answer as that of this host.
  void GETWithOrigin(std::string_view path, const Value& headers,
                     OriginCompletion completion) const;
  /// The URL stands alone, without the host.
  void GETWithFullUrl(std::string_view url, const Value& headers, Completion completion) const;
  /// The body is a form when "Content-Type" is "application/x-www-form-urlencoded", else JSON.
  void POST(std::string_view path, const Value& parameters, const Value& headers,
            Completion completion) const;
  /// The body is JSON, whatever "Content-Type" says.
  void PUT(std::string_view path, const Value& parameters, const Value& headers,
           Completion completion) const;
  /// Without a body.
  void DELETE(std::string_view path, const Value& headers, Completion completion) const;

  /// Gives a prepared request the parameters as a form ("a=x%20y&b=1", keys as they stand) and the
  /// headers, and sends it.
  void createUrlencodedRequestWithParams(const Value& parameters, const Value& headers,
                                         std::string_view url, HttpRequest request,
                                         Completion completion) const;
  /// Sends a prepared request and decodes the answer. The URL serves the error text only.
  void sessionCallerWithUrl(std::string_view url, HttpRequest request, Completion completion) const;

  /// Escapes each byte but ASCII letters, digits and "-._~".
  static std::string URLEncodeStringFromString(std::string_view string);

 private:
  HTTPClient(std::string hostURL, std::shared_ptr<HttpTransport> transport);
  void sendJson(std::string_view path, HttpRequest request, const Value& parameters,
                const Value& headers, Completion completion) const;
  TERN_INTERNAL void send(std::string_view url, HttpRequest request,
                          OriginCompletion completion) const;

  const std::string hostURL_;
  const std::shared_ptr<HttpTransport> transport_;
};

}  // namespace tern
