#include "tests/support/Paths.hpp"

namespace tern::test {

std::string sourcePath(const std::string& below) {
  return std::string(TERN_SOURCE_DIR) + "/" + below;
}

std::string samplePath() { return sourcePath("data/plaza"); }

std::string commandPath() { return TERN_BINARY_PATH; }

std::string commandWithPagePath() { return TERN_WITH_PAGE_PATH; }

}  // namespace tern::test
