// The end of a process that does not come to its end by itself.
//
//   endProcessWithin(std::chrono::seconds(20), ExitStatus::answered);
//   service.stop(...);  // what it waits for may take for ever
//
// Ownership: keeps nothing. Threads: any; the end comes on a thread of its own, and nothing is
// cleared up. Fails: where the system gives no thread, by std::system_error.
#pragma once

#include <chrono>

#include "tools/tern/Failure.hpp"

namespace tern::command {

void endProcessWithin(std::chrono::milliseconds time, ExitStatus status);

}  // namespace tern::command
