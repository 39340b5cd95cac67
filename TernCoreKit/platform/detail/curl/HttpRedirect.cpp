#include "TernCoreKit/platform/detail/curl/HttpRedirect.hpp"

#include <curl/curl.h>

#include <memory>
#include <string_view>

#include "TernCoreKit/platform/detail/HttpRequestCheck.hpp"

namespace tern::inline v5::detail {
namespace {

struct FreeUrl {
  void operator()(CURLU* url) const { curl_url_cleanup(url); }
};
using Url = std::unique_ptr<CURLU, FreeUrl>;

// Null when the text is no URL.
Url parse(const std::string& text) {
  Url url(curl_url());
  if (url == nullptr ||
      curl_url_set(url.get(), CURLUPART_URL, text.c_str(), CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK) {
    return nullptr;
  }
  return url;
}

// Empty when the URL has no such part.
std::string part(const Url& url, CURLUPart which) {
  char* text = nullptr;
  if (curl_url_get(url.get(), which, &text, CURLU_DEFAULT_PORT) != CURLUE_OK) return {};
  std::string copy = text;
  curl_free(text);
  return copy;
}

bool isSameOrigin(const Url& a, const Url& b) {
  // Names of hosts, as those of headers, do not depend on case.
  return isSameHeader(part(a, CURLUPART_SCHEME), part(b, CURLUPART_SCHEME)) &&
         isSameHeader(part(a, CURLUPART_HOST), part(b, CURLUPART_HOST)) &&
         part(a, CURLUPART_PORT) == part(b, CURLUPART_PORT);
}

bool isSentOnAsGet(const std::string& method, int status) {
  if (method == "GET" || method == "HEAD") return false;
  return status == 303 || (method == "POST" && (status == 301 || status == 302));
}

void dropHeader(HttpRequest& request, std::string_view name) {
  std::erase_if(request.headers,
                [&](const HttpHeader& header) { return isSameHeader(header.name, name); });
}

}  // namespace

bool isSameOrigin(const std::string& url, const std::string& other) {
  return isSameOrigin(parse(url), parse(other));
}

std::optional<std::string> urlFault(const std::string& text) {
  const Url url = parse(text);
  if (url == nullptr) return "The URL cannot be understood";
  const std::string scheme = part(url, CURLUPART_SCHEME);
  if (scheme != "http" && scheme != "https") return "The URL is neither http nor https";
  if (!part(url, CURLUPART_USER).empty() || !part(url, CURLUPART_PASSWORD).empty()) {
    return "The URL holds a user name or a password";
  }
  return std::nullopt;
}

bool isRedirect(int status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

std::optional<std::string> followRedirect(HttpRequest& request, int status,
                                          const std::string& location) {
  if (const auto fault = urlFault(location)) return "Redirect refused: " + *fault;
  const Url from = parse(request.url);
  const Url to = parse(location);
  if (part(from, CURLUPART_SCHEME) == "https" && part(to, CURLUPART_SCHEME) == "http") {
    return "Redirect refused: it leads from https to http";
  }
  if (isSentOnAsGet(request.method, status)) {
    request.method = "GET";
    request.body.reset();
    dropHeader(request, "Content-Type");
  }
  if (!isSameOrigin(from, to)) {
    if (request.body.has_value()) {
      return "Redirect refused: it would carry the request's body to another host";
    }
    dropHeader(request, "Authorization");
    dropHeader(request, "Cookie");
  }
  request.url = location;
  return std::nullopt;
}

}  // namespace tern::detail
