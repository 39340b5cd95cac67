// The files of a library that is built without a system below it (TERN_WITH_SYSTEM off).

#include <cerrno>

#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/platform/PlainFile.hpp"

namespace tern::inline v5 {
namespace {

FileError thereAreNone() {
  return {ENOSYS, "This build has no files of its own: the application has to provide them"};
}

class NoFiles final : public FileSystem {
 public:
  std::string documentsFolder() const override { return {}; }
  std::optional<std::string> readFile(std::string_view /*path*/,
                                      std::size_t /*mostBytes*/) const override {
    return std::nullopt;
  }
  std::optional<FileError> createFile(std::string_view /*path*/,
                                      std::string_view /*contents*/) override {
    return thereAreNone();
  }
  bool isFile(std::string_view /*path*/) const override { return false; }
  bool isFolder(std::string_view /*path*/) const override { return false; }
  std::optional<FileError> createFolders(std::string_view /*path*/) override {
    return thereAreNone();
  }
  std::vector<std::string> list(std::string_view /*path*/) const override { return {}; }
  std::optional<FileError> remove(std::string_view /*path*/) override { return thereAreNone(); }
};

}  // namespace

namespace detail {

std::shared_ptr<FileSystem> defaultFileSystem() { return std::make_shared<NoFiles>(); }

}  // namespace detail

std::shared_ptr<FileSystem> makeFileSystem(std::string /*documentsFolder*/) {
  return detail::defaultFileSystem();
}

std::variant<std::string, FileError> readPlainFile(const std::string& /*path*/,
                                                   std::uintmax_t /*mostBytes*/) {
  return thereAreNone();
}

bool isFolderAt(const std::string& /*path*/) { return false; }

}  // namespace tern
