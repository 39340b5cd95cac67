#include "TernCoreKit/platform/Files.hpp"

#include <utility>

#include "TernCoreKit/platform/detail/Current.hpp"

namespace tern::inline v5 {

namespace detail {

// In DefaultFiles.cpp, or in NoFiles.cpp.
std::shared_ptr<FileSystem> defaultFileSystem();

}  // namespace detail

std::shared_ptr<FileSystem> fileSystem() {
  if (auto own = detail::current<FileSystem>().get()) return own;
  return detail::defaultFileSystem();
}

void setFileSystem(std::shared_ptr<FileSystem> fileSystem) {
  detail::current<FileSystem>().set(std::move(fileSystem));
}

}  // namespace tern
