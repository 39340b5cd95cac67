// Files over the callbacks of a host, which knows files by their paths and no folders: a folder is
// there as long as something lies in it.
//
// Ownership: shares the host. Threads: any. Fails: as FileSystem says.
#pragma once

#include <memory>
#include <utility>

#include "TernCoreKit/c/detail/Host.hpp"
#include "TernCoreKit/platform/Files.hpp"

namespace tern::inline v5::detail {

class HostFiles final : public FileSystem {
 public:
  // REQUIRES: the host has all callbacks for files.
  explicit HostFiles(std::shared_ptr<Host> host) : host_(std::move(host)) {}

  // A name for it, since it has no path.
  std::string documentsFolder() const override { return "/host"; }
  std::optional<std::string> readFile(std::string_view path, std::size_t mostBytes) const override;
  std::optional<FileError> createFile(std::string_view path, std::string_view contents) override;
  bool isFile(std::string_view path) const override;
  bool isFolder(std::string_view path) const override;
  std::optional<FileError> createFolders(std::string_view path) override;
  std::vector<std::string> list(std::string_view path) const override;
  std::optional<FileError> remove(std::string_view path) override;

 private:
  // The paths of all files that begin with the prefix.
  std::vector<std::string> filesBelow(const std::string& prefix) const;

  const std::shared_ptr<Host> host_;
};

}  // namespace tern::detail
