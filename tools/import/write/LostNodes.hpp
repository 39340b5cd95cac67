// Tells of nodes that the ways of the source do not lead to, from or on from. A venue takes them as
// they are; but who is led there is lost.
//
// Threads: free functions. Fails: never.
#pragma once

#include "tools/import/write/VenuePlan.hpp"

namespace tern::imports {

// Each node once: as "island", "noWayBack", "noWayThere" or "deadEnd", which is a node without a
// place that only ways from other floors lead to.
void tellLostNodes(VenuePlan& plan);

}  // namespace tern::imports
