// Where the tests find the repository and the command that they run.
#pragma once

#include <string>

namespace tern::test {

// A path below the repository.
std::string sourcePath(const std::string& below);
std::string samplePath();
std::string commandPath();
// The command as it is built with a page, that of tests/page.
std::string commandWithPagePath();

}  // namespace tern::test
