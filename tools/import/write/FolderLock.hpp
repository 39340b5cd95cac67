// Holds a folder for one process at a time, among those that ask.
//
// It leaves nothing behind: the folder itself is locked, and whoever is killed gives it up.
//
// Ownership: owns the lock until it goes. Threads: one.
#pragma once

#include <chrono>
#include <filesystem>

namespace tern::imports {

class FolderLock {
 public:
  FolderLock() = default;
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  // Waits for it so long; false when another still holds it. Where the file system has no locks,
  // there is nothing to wait for.
  [[nodiscard]] bool take(const std::filesystem::path& folder, std::chrono::milliseconds patience);

 private:
  int descriptor_ = -1;
};

}  // namespace tern::imports
