// What the command says of itself, in lines of at most eighty characters.
//
// Threads: any. Fails: never.
#pragma once

#include <string>

namespace tern::command {

struct Command;

// The help of the whole program.
std::string generalHelp();

std::string helpOf(const Command& command);

}  // namespace tern::command
