// The same text read by two other readers, which many have used for long.
//
// Threads: any. Fails: by value.
#pragma once

#include <optional>
#include <string>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::fuzz {

// Keys and numbers as our reader has them: of a key that comes again the last value in the first
// place. Absent for what the reader refuses. REQUIRES: no byte order mark.
std::optional<Value> readBySimdjson(const std::string& text);
std::optional<Value> readByNlohmann(const std::string& text);

}  // namespace tern::fuzz
