// The documents folder of the disk cache, which a change of the library's version wipes whole: it
// must hold nothing but the cache.
//
// Threads: as the environment. Fails: by value, naming the folder.
#pragma once

#include <string>
#include <variant>

#include "tools/tern/Failure.hpp"
#include "tools/tern/HostOptions.hpp"

namespace tern::command {

// The folder to use: the one that is named, else one for each host and customer below the user's
// data folder. Refuses one that holds something else.
std::variant<std::string, Failure> cacheFolder(const HostOptions& options);

}  // namespace tern::command
