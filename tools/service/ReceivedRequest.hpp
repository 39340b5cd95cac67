// An HTTP request as a client has sent it.
//
//   const auto request = parseHead("GET /a HTTP/1.1\r\nHost: h");
//   request->header("host");  // "h"
//
// Threads: plain values. Fails: by value.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "TernCoreKit/platform/Http.hpp"

namespace tern::service {

struct ReceivedRequest {
  std::string method;
  // Path and query as they were sent.
  std::string target;
  // In the order in which they came.
  std::vector<HttpHeader> headers;
  std::string body;

  // The first of that name, in whatever case.
  std::optional<std::string> header(std::string_view name) const;
};

// The request line and the headers, without the empty line behind them; none for what is no HTTP.
std::optional<ReceivedRequest> parseHead(std::string_view head);

// How many bytes follow the head, or the status that says why they are not taken: a body has to
// announce its size, which one that is sent in chunks does not.
using BodySize = std::variant<std::size_t, int>;
BodySize bodySize(const ReceivedRequest& request, std::size_t most);

}  // namespace tern::service
