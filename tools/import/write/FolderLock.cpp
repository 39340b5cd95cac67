#include "tools/import/write/FolderLock.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace tern::imports {

FolderLock::~FolderLock() {
  if (descriptor_ >= 0) close(descriptor_);
}

bool FolderLock::take(const std::filesystem::path& folder, std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds pause(20);
  descriptor_ = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor_ < 0) return true;
  while (flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    if (patience <= std::chrono::milliseconds::zero()) return false;
    std::this_thread::sleep_for(pause);
    patience -= pause;
  }
  return true;
}

}  // namespace tern::imports
