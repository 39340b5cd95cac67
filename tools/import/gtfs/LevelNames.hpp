// What a floor is called that several levels of a feed are.
//
// Threads: free functions. Fails: never.
#pragma once

#include "tools/import/draft/Names.hpp"

namespace tern::imports {

// Behind those that are there, unless one of them says the same: "On street", "Street".
void addLevelName(Names& names, const Name& added);

}  // namespace tern::imports
