// What an import came to: as JSON, and in a few lines for people.
//
// Threads: free functions. Fails: never.
#pragma once

#include <string>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/write/WriteVenues.hpp"

namespace tern::imports {

// {"venues":[{"id":1,"name":"...","floors":4,...,"kinds":{"walkway":1,...},"residual":0.001}],
//  "told":[{"id":"...","kind":"dangling","why":"...","cameThrough":false}]}
Value reportOf(const WrittenVenues& written);

// What came in, by kind; what did not, and what looks odd, by reason. Each line ends with a line
// break.
std::string reportText(const WrittenVenues& written);

}  // namespace tern::imports
