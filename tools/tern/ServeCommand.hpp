// The command that serves a venue folder as a mapping service does, until SIGINT or SIGTERM.
//
// Threads: the process must not have started any that could take the signals instead. Fails: by
// value, naming the folder or the port.
#pragma once

#include <optional>

#include "tools/tern/Arguments.hpp"
#include "tools/tern/Failure.hpp"
#include "tools/tern/Output.hpp"

namespace tern::command {

// Writes one line with its address when it is ready. Returns when it has been stopped.
std::optional<Failure> serveFolder(const Arguments& call, Output& answers);

}  // namespace tern::command
