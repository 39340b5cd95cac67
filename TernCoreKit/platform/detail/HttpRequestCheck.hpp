// Keeps a request from saying more than one request: line breaks in a header would be further
// headers, and a length of the caller's own would cut the body elsewhere than it ends.
//
// Threads: any. Fails: never.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "TernCoreKit/platform/Http.hpp"

namespace tern::inline v5::detail {

// Whether two header names are the same: their case does not count.
bool isSameHeader(std::string_view a, std::string_view b);

// What keeps the request from being sent, as a line that shows nothing of it.
std::optional<std::string> httpRequestFault(const HttpRequest& request);

}  // namespace tern::detail
