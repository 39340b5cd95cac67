// The page of the manual, made of the table of commands, in roff with the macros of man(7).
//
// Threads: any. Fails: never.
#pragma once

#include <string>

namespace tern::command {

std::string manualPage();

}  // namespace tern::command
