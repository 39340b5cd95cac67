// The command `tern` from its words to its exit status.
//
// Threads: one call at a time; it takes the place of the process's log sink and ignores SIGPIPE, so
// that a reader who goes away is an error like any other.
// Fails: by the exit status and one line of diagnostics that names the option or file; with --json
// the answer then is {"error": ...}.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "tools/service/PageFile.hpp"

namespace tern::command {

// File descriptors; they stay the caller's.
struct Streams {
  int requests = 0;
  int answers = 1;
  int diagnostics = 2;
};

// The words are those behind the program's name; the page is for the command that shows one.
// Returns the exit status.
int runCommand(const std::vector<std::string>& words, const Streams& streams,
               std::span<const service::PageFile> page = {});

}  // namespace tern::command
