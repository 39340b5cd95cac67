#include "tests/support/RealData.hpp"

#include <algorithm>
#include <cstdlib>
#include <system_error>
#include <vector>

#include "tests/support/Paths.hpp"

namespace tern::test {

std::optional<std::filesystem::path> realData() {
  namespace fs = std::filesystem;
  std::error_code ignored;
  if (const char* const named = std::getenv("TERN_REALDATA")) {
    return fs::is_directory(named, ignored) ? std::optional<fs::path>(named) : std::nullopt;
  }
  const fs::path above = fs::path(sourcePath("")).parent_path().parent_path();
  std::vector<fs::path> found;
  for (const auto& beside : fs::directory_iterator(above, ignored)) {
    const fs::path data = beside.path() / "data";
    if (fs::is_directory(data / "network", ignored)) found.push_back(data);
  }
  const auto first = std::ranges::min_element(found);
  return first == found.end() ? std::nullopt : std::optional(*first);
}

}  // namespace tern::test
