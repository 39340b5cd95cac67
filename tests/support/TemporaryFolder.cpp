#include "tests/support/TemporaryFolder.hpp"

#include <stdlib.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <system_error>

namespace tern::test {

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "tern-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) std::abort();
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void TemporaryFolder::write(std::string_view name, std::string_view text) const {
  const std::filesystem::path file = path_ / name;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) std::abort();
}

std::string TemporaryFolder::read(std::string_view name) const {
  std::ifstream stream(path_ / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace tern::test
