// The same text read by two other readers, which many have used for long.
//
// Threads: any. Fails: by value.
#pragma once

#include <optional>
#include <string>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::fuzz {

// Absent for what the reader refuses.
struct PeerReading {
  std::optional<Value> value;
  // Whether it was refused for the size of a number only.
  bool hasLargeNumber = false;
};

// Keys and numbers as our reader has them: of a key that comes again the last value in the first
// place. REQUIRES: no byte order mark.
PeerReading readBySimdjson(const std::string& text);
PeerReading readByRapidJson(const std::string& text);

}  // namespace tern::fuzz
