// Which URLs a request may go to, and what becomes of it when it is sent on to another.
//
// Threads: any. Fails: by a line that shows nothing of the request.
#pragma once

#include <optional>
#include <string>

#include "TernCoreKit/platform/Http.hpp"

namespace tern::inline v5::detail {

// What keeps a request from going to the URL: it is none, its scheme is neither http nor https, or
// it holds a user name or password.
std::optional<std::string> urlFault(const std::string& url);

bool isRedirect(int status);

// Whether scheme, host and port are the same. REQUIRES: neither URL has a fault.
bool isSameOrigin(const std::string& url, const std::string& other);

// Makes the request the one that goes to the new address, an absolute URL, or says why it may not.
// 303, and 301 or 302 after a POST, turn it into a GET without a body. To another scheme, host or
// port goes neither "Authorization" nor "Cookie" nor a body; from https never to http.
// REQUIRES: the request's own URL has no fault.
std::optional<std::string> followRedirect(HttpRequest& request, int status,
                                          const std::string& location);

}  // namespace tern::detail
