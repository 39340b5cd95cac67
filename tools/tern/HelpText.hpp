// What the command says of itself.
//
// Threads: any. Fails: never.
#pragma once

#include <string>
#include <string_view>

namespace tern::command {

// The help of the whole program.
std::string generalHelp();

// What the help of one command ends with; empty for a command that does not exist.
std::string_view examplesOf(std::string_view command);

}  // namespace tern::command
