// The command that writes a synthetic venue folder.
//
// It writes to a folder that is missing, is empty or is a venue folder already; files of the same
// names are replaced and nothing is ever removed. Any other folder is refused. Threads: one. Fails:
// by value, naming the option or the file.
#pragma once

#include "tools/tern/Arguments.hpp"
#include "tools/tern/Outcome.hpp"

namespace tern::command {

// REQUIRES: the options are valid.
Outcome generateFolder(const Arguments& call);

}  // namespace tern::command
