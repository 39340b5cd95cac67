// Makes one node of those that are one: those of one id, and those that are said to be.
//
// Threads: a free function. Fails: never.
#pragma once

#include <cstddef>
#include <map>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

// The first of them stays. `same` leads from a node to one before it.
void mergeSameNodes(Draft& draft, const std::map<std::size_t, std::size_t>& same);

}  // namespace tern::imports
