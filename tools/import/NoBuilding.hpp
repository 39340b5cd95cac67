// Says why a source holds nothing that can be imported, and what would help.
//
// Threads: free functions. Fails: never.
#pragma once

#include <filesystem>
#include <string>

#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

std::string whyNoBuilding(const std::filesystem::path& source, const SourceFiles& files);

}  // namespace tern::imports
