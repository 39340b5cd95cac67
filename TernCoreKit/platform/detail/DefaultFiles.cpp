// The file systems of a library that is built with the system's files (TERN_WITH_SYSTEM on).

#include <cstdlib>
#include <utility>

#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/platform/detail/PosixFiles.hpp"

namespace tern::inline v5 {

namespace {

// A relative path would mean another folder wherever the process stands.
std::string absolutePathIn(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value == '/' ? value : "";
}

std::string defaultDocumentsFolder() {
  std::string data = absolutePathIn("XDG_DATA_HOME");
  if (data.empty()) {
    data = absolutePathIn("HOME");
    if (data.empty()) return {};
    data += "/.local/share";
  }
  return data + "/TernCoreKit";
}

}  // namespace

namespace detail {

std::shared_ptr<FileSystem> defaultFileSystem() { return makeFileSystem(defaultDocumentsFolder()); }

}  // namespace detail

std::shared_ptr<FileSystem> makeFileSystem(std::string documentsFolder) {
  return std::make_shared<detail::PosixFiles>(std::move(documentsFolder));
}

}  // namespace tern
