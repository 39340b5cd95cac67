#include "TernCoreKit/platform/Files.hpp"

#include <cstdlib>
#include <utility>

#include "TernCoreKit/platform/detail/Current.hpp"
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

std::shared_ptr<FileSystem> makeFileSystem(std::string documentsFolder) {
  return std::make_shared<detail::PosixFiles>(std::move(documentsFolder));
}

std::shared_ptr<FileSystem> fileSystem() {
  if (auto own = detail::current<FileSystem>().get()) return own;
  return makeFileSystem(defaultDocumentsFolder());
}

void setFileSystem(std::shared_ptr<FileSystem> fileSystem) {
  detail::current<FileSystem>().set(std::move(fileSystem));
}

}  // namespace tern
