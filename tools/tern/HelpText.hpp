// What the command says of itself, laid out for a terminal.
//
// Threads: any. Fails: never.
#pragma once

#include <string>

#include "tools/tern/Look.hpp"

namespace tern::command {

struct Command;

// The help of the whole program.
std::string generalHelp(const Look& look);

std::string helpOf(const Command& command, const Look& look);

}  // namespace tern::command
