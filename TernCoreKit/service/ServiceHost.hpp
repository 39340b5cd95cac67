/// @file
/// The mapping service's default host: where the destinations that venues share are asked for,
/// whatever host a hub has. The build sets it (TERN_DEFAULT_SERVICE_HOST); an application that runs
/// its own service sets it before it makes the first hub.
///
/// Threads: any. Fails: never.
#pragma once

#include <string>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// Scheme and host, without a "/" at the end.
TERN_API std::string defaultServiceHost();

/// An empty host brings that of the build back.
TERN_API void setDefaultServiceHost(std::string host);

}  // namespace tern
