// What an area that one walks in is for others beside it.
//
// Ownership, threads, failure: plain values.
#pragma once

namespace tern::imports {

// From what one rather goes through to what one goes through only where there is nothing else.
enum class AreaUse { corridor, ground, passage, mover, ownRoom };

}  // namespace tern::imports
