// The process's transport when no host application has put its own in place. Which one it is, is
// settled when the library is built: curl/CurlTransport.cpp or NoHttpTransport.cpp defines this
// function, and `makeHttpTransport`.
#pragma once

#include "TernCoreKit/platform/Http.hpp"

namespace tern::detail {

// Made by the first call and never destroyed. Threads: any.
HttpTransport& defaultHttpTransport();

}  // namespace tern::detail
