// How many processors there are to work on.
#pragma once

namespace tern::inline v5::detail {

// Those that the calling thread may run on, where the system tells: in a container, or under a
// scheduler, these are fewer than the machine has. At least one. Threads: any. Fails: never.
unsigned usableProcessors();

}  // namespace tern::detail
