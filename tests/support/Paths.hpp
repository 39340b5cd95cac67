// Where the tests find the repository and the command that they run.
#pragma once

#include <string>

namespace tern::test {

// A path below the repository.
std::string sourcePath(const std::string& below);
std::string samplePath();
std::string commandPath();

}  // namespace tern::test
