#pragma once

#include <string>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::bench {

// RapidJSON: its SAX reader in place, with exact doubles and checked UTF-8, straight into a Value.
// Unlike ours it does not settle repeated keys.
Value parseByRapidJson(std::string text);

}  // namespace tern::bench
