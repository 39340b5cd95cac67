// The desktop that the command is run on.
//
// Ownership: keeps nothing. Threads: as readers of the environment. Fails: never; where nothing can
// be opened nothing is.
#pragma once

#include <string>

namespace tern::command {

// Whether there is a screen to open a page on.
bool hasDesktop();

// Has xdg-open show the address, which lives on by itself. It gets the environment, but for the
// secret of a mapping service.
void openOnDesktop(const std::string& address);

}  // namespace tern::command
