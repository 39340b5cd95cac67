/// @file
/// Sends HTTP requests. A host application may put its own stack (a phone's URL loading, its proxy,
/// its pinned certificates) in place of the default one, before it makes the first hub.
///
///     httpTransport()->send({.url = "https://maps.example.com/a"}, [](HttpResponse response) {
///       if (response.error.has_value()) ...
///     });
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// One header line.
struct HttpHeader {
  /// The part before the colon; upper and lower case mean the same.
  std::string name;
  /// The part behind the colon.
  std::string value;
  /// Whether name and value are the same, to the letter.
  friend bool operator==(const HttpHeader&, const HttpHeader&) = default;
};

/// What is asked of a server.
struct HttpRequest {
  /// Absolute, and percent-encoded where it has to be.
  std::string url;
  /// The HTTP method.
  std::string method = "GET";
  /// In the order in which they are sent; a name may come more than once.
  std::vector<HttpHeader> headers = {};
  /// Sent as it is; none when absent.
  std::optional<std::string> body = {};
};

/// What came of a request.
struct HttpResponse {
  /// 0 when no HTTP answer came.
  int status = 0;
  /// Decompressed. Absent when not one byte came, or when the answer broke off: a part of a body is
  /// no body.
  std::optional<std::string> body = {};
  /// Why the exchange failed, as a line for a person; absent when it came to its end. Never holds a
  /// header, a body or a query.
  std::optional<std::string> error = {};
  /// Whether a redirect led to another scheme, host or port than the request's, be it back again:
  /// then somebody else may have chosen the answer.
  bool leftOrigin = false;
};

/// Sends HTTP requests.
///
/// Ownership: shared by those who send over it.
/// Threads: any.
/// Fails: by the response's error.
class TERN_API HttpTransport {
 public:
  /// Takes what came of a request.
  using Completion = std::function<void(HttpResponse)>;

  virtual ~HttpTransport() = default;

  /// Sends one request, always to the service: nothing is taken from a local cache. Cookies and
  /// stored passwords are not sent; redirects are followed here. The completion is called exactly
  /// once, on a thread of the transport; it may run before the call returns, so a caller holds no
  /// lock that the completion takes.
  /// Threads: may be called from any, also from within a completion.
  /// REQUIRES: the completion is not empty, does not throw and ends by itself. It may send further
  /// requests and release the last reference to the transport; it does not wait for another
  /// completion.
  /// Ownership: the transport owns the completion until it has run.
  virtual void send(HttpRequest request, Completion completion) = 0;
};

/// How the default transport sends.
struct HttpSettings {
  /// Until a connection stands, for each hop.
  /// DEFAULT: 10 s.
  std::chrono::milliseconds connectTimeout{10'000};
  /// The longest time in which nothing moves in either direction, connecting included. There is no
  /// bound for a request as a whole: a large document on a slow line takes its time.
  /// DEFAULT: 30 s.
  std::chrono::milliseconds stallTimeout{30'000};
  /// A body that is larger when decompressed is an error.
  /// DEFAULT: 512 MiB.
  std::size_t mostBodyBytes = std::size_t{512} << 20U;
  /// A request that is sent on more often is an error.
  /// DEFAULT: 10.
  int mostRedirects = 10;
  /// Certificates (PEM) to trust in place of the system's; empty for those of the system.
  std::string certificateFile = {};
};

/// A transport of the default kind: http and https over libcurl, on a thread of its own, which the
/// first request starts.
///
/// Certificates are verified, TLS 1.2 is the least, gzip is accepted, connections are kept for
/// later requests, and up to 16 requests are under way at once; others wait, in their order. The
/// environment (proxies) is not read.
///
/// Redirects are followed within http and https and never from https to http. "Authorization" and
/// "Cookie" go to no other scheme, host or port than the request's own; a redirect that would carry
/// a body to one is an error.
///
/// A request with a header or method that HTTP does not allow (line breaks, NUL) is not sent but
/// answered by an error; so is one that sets Connection, Content-Length, Host or Transfer-Encoding,
/// which are the transport's. In a library built without libcurl (TERN_WITH_CURL off) each request
/// is answered by an error.
///
/// Where memory, threads or descriptors are short, a request is answered by an error, and a later
/// one may succeed.
///
/// Its destructor answers what is under way by an error, and waits for a completion that is running
/// unless that is the one that called it.
TERN_API std::shared_ptr<HttpTransport> makeHttpTransport(HttpSettings settings = {});

/// The process-wide transport; never null. When the process ends (main returns, or somebody calls
/// exit), the default one waits for the completion that is running; requests under way and later
/// ones are dropped without a call of their completions.
/// Threads: any.
TERN_API std::shared_ptr<HttpTransport> httpTransport();

/// Puts a transport in the place of the current one; null brings the default back. Requests that
/// the old one has taken stay with it.
/// Threads: any.
TERN_API void setHttpTransport(std::shared_ptr<HttpTransport> transport);

}  // namespace tern
