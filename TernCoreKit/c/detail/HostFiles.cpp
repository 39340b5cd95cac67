#include "TernCoreKit/c/detail/HostFiles.hpp"

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "TernCoreKit/c/detail/Sink.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5::detail {

namespace {

// Bytes of all paths that a listing may hold.
constexpr std::size_t mostListedBytes = std::size_t{64} << 20U;

FileError hostError(int code, const char* text) { return {code, text}; }

// Without empty names; absent when a name leads out of the folder, or holds a NUL.
std::optional<std::string> plainPath(std::string_view path) {
  std::string plain;
  while (!path.empty()) {
    const std::string_view name = path.substr(0, path.find('/'));
    path.remove_prefix(std::min(name.size() + 1, path.size()));
    if (name.empty()) continue;
    if (name == "." || name == ".." || name.find('\0') != name.npos) return std::nullopt;
    if (!plain.empty()) plain += '/';
    plain += name;
  }
  return plain;
}

std::string folderPrefix(const std::string& folder) { return folder.empty() ? "" : folder + "/"; }

}  // namespace

std::optional<std::string> HostFiles::readFile(std::string_view path, std::size_t mostBytes) const {
  std::optional<std::string> contents;
  attempt([&] {
    const auto plain = plainPath(path);
    if (!plain) return;
    const SinkHandle sink(mostBytes);
    host_->callbacks().file_read(host_->context(), plain->c_str(), sink.handle());
    auto pieces = sink.taken();
    if (!pieces.empty() && !sink.isOverfull()) contents = joinedPieces(std::move(pieces));
  });
  return contents;
}

std::optional<FileError> HostFiles::createFile(std::string_view path, std::string_view contents) {
  bool isWritten = false;
  const auto write = [&] {
    const auto plain = plainPath(path);
    isWritten = plain && !plain->empty() &&
                host_->callbacks().file_write(host_->context(), plain->c_str(), contents.data(),
                                              contents.size());
  };
  if (!attempt(write)) return hostError(ENOMEM, outOfMemory);
  return isWritten ? std::nullopt : std::optional(hostError(EIO, "the host did not write"));
}

bool HostFiles::isFile(std::string_view path) const {
  bool isThere = false;
  attempt([&] {
    const auto plain = plainPath(path);
    isThere = plain && std::ranges::count(filesBelow(*plain), *plain) > 0;
  });
  return isThere;
}

bool HostFiles::isFolder(std::string_view path) const {
  bool isThere = false;
  attempt([&] {
    const auto plain = plainPath(path);
    isThere = plain && (plain->empty() || !filesBelow(folderPrefix(*plain)).empty());
  });
  return isThere;
}

// Those of a file come with it.
std::optional<FileError> HostFiles::createFolders(std::string_view path) {
  bool isPlain = false;
  if (!attempt([&] { isPlain = plainPath(path).has_value(); })) {
    return hostError(ENOMEM, outOfMemory);
  }
  return isPlain ? std::nullopt : std::optional(hostError(EINVAL, "no path of a folder"));
}

std::vector<std::string> HostFiles::list(std::string_view path) const {
  std::vector<std::string> names;
  attempt([&] {
    const auto plain = plainPath(path);
    if (!plain) return;
    const std::string prefix = folderPrefix(*plain);
    for (const std::string& file : filesBelow(prefix)) {
      const std::size_t end = std::min(file.find('/', prefix.size()), file.size());
      names.push_back(file.substr(prefix.size(), end - prefix.size()));
    }
    std::ranges::sort(names);
    const auto repeated = std::ranges::unique(names);
    names.erase(repeated.begin(), repeated.end());
  });
  return names;
}

std::optional<FileError> HostFiles::remove(std::string_view path) {
  std::optional<FileError> error = hostError(ENOENT, "there is no such file");
  const auto removeAll = [&] {
    const auto plain = plainPath(path);
    if (!plain || plain->empty()) return;
    for (const std::string& file : filesBelow(*plain)) {
      if (file != *plain && !file.starts_with(folderPrefix(*plain))) continue;
      error.reset();
      if (!host_->callbacks().file_remove(host_->context(), file.c_str())) {
        error = hostError(EIO, "the host did not remove");
        return;
      }
    }
  };
  if (!attempt(removeAll)) return hostError(ENOMEM, outOfMemory);
  return error;
}

std::vector<std::string> HostFiles::filesBelow(const std::string& prefix) const {
  const SinkHandle sink(mostListedBytes);
  host_->callbacks().file_list(host_->context(), prefix.c_str(), sink.handle());
  auto files = sink.taken();
  std::erase_if(files, [&](const std::string& file) { return !file.starts_with(prefix); });
  return files;
}

}  // namespace tern::detail
