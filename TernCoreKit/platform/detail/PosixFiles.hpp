// The default file system. Every path is walked from the documents folder name by name, each folder
// opened within the one before and never through a symbolic link, so that nobody can exchange a
// folder for a link between a check and its use.
//
// Ownership, threads and failures are those of FileSystem.
#pragma once

#include "TernCoreKit/platform/Files.hpp"

namespace tern::inline v5::detail {

class PosixFiles final : public FileSystem {
 public:
  explicit PosixFiles(std::string documentsFolder);

  std::string documentsFolder() const override;
  std::optional<std::string> readFile(
      std::string_view path,
      std::size_t mostBytes = std::numeric_limits<std::size_t>::max()) const override;
  std::optional<FileError> createFile(std::string_view path, std::string_view contents) override;
  bool isFile(std::string_view path) const override;
  bool isFolder(std::string_view path) const override;
  std::optional<FileError> createFolders(std::string_view path) override;
  std::vector<std::string> list(std::string_view path) const override;
  void removeAbandoned(std::string_view path) override;
  std::optional<FileError> remove(std::string_view path) override;

 private:
  const std::string documentsFolder_;
};

}  // namespace tern::detail
