// Leaves out of a draft what nobody can go to: floors without a node, and buildings without a
// floor.
//
// Threads: a free function. Fails: never; what is left out is told of in the draft.
#pragma once

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

void dropEmptyFloors(Draft& draft);

}  // namespace tern::imports
