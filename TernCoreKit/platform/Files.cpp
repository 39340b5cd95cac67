#include "TernCoreKit/platform/Files.hpp"

#include <cstdlib>
#include <mutex>
#include <utility>

#include "TernCoreKit/platform/detail/PosixFiles.hpp"

namespace tern {

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

struct Current {
  std::mutex mutex;
  std::shared_ptr<FileSystem> fileSystem;  // guarded by mutex; null stands for the default one
};

// Never destroyed: other static objects may still ask for it.
Current& current() {
  static auto& current = *new Current;
  return current;
}

}  // namespace

std::shared_ptr<FileSystem> makeFileSystem(std::string documentsFolder) {
  return std::make_shared<detail::PosixFiles>(std::move(documentsFolder));
}

std::shared_ptr<FileSystem> fileSystem() {
  {
    const std::lock_guard lock(current().mutex);
    if (current().fileSystem != nullptr) return current().fileSystem;
  }
  return makeFileSystem(defaultDocumentsFolder());
}

void setFileSystem(std::shared_ptr<FileSystem> fileSystem) {
  // The old one goes away outside the lock.
  const std::lock_guard lock(current().mutex);
  current().fileSystem.swap(fileSystem);
}

}  // namespace tern
