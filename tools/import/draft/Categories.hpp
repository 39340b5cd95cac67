// The kinds of places that sources of building data share, and what they are called.
//
// Threads: free functions. Fails: never.
#pragma once

#include <string_view>

#include "tools/import/draft/Names.hpp"

namespace tern::imports {

// In five languages; what is not known is called by its id, written as a word.
Names namesOfCategory(std::string_view category);

}  // namespace tern::imports
