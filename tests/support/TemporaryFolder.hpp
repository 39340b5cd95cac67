// A new folder below the system's own for temporary files, removed with all that lies in it.
//
// Ownership: owns the folder. Threads: one. Fails: a file that cannot be written ends the test
// program.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tern::test {

class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string at(std::string_view name) const { return (path_ / name).string(); }

  // Writes a file below the folder, and the folders on its way.
  void write(std::string_view name, std::string_view text) const;
  // What the file holds; empty when there is none.
  std::string read(std::string_view name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace tern::test
