#include "TernCoreKit/platform/detail/PosixFiles.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace tern::inline v5::detail {

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
constexpr mode_t folderMode = 0700;
constexpr mode_t fileMode = 0600;

// An open file or folder. When there is none, `errno` says why.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    const int before = errno;
    if (isOpen()) ::close(number_);
    errno = before;
  }

  bool isOpen() const { return number_ >= 0; }
  int number() const { return number_; }
  int release() { return std::exchange(number_, -1); }

 private:
  int number_;
};

FileError errorOf(int code) { return {code, std::generic_category().message(code)}; }
FileError lastError() { return errorOf(errno); }

bool isSafe(std::string_view name) {
  return name != "." && name != ".." && name.find('\0') == std::string_view::npos;
}

// The names of a path, empty ones left out; none at all when one of them leads elsewhere.
std::optional<std::vector<std::string>> namesOf(std::string_view path) {
  std::vector<std::string> names;
  while (!path.empty()) {
    const std::string_view name = path.substr(0, path.find('/'));
    if (!isSafe(name)) return std::nullopt;
    if (!name.empty()) names.emplace_back(name);
    path.remove_prefix(std::min(path.size(), name.size() + 1));
  }
  return names;
}

Descriptor openFolderIn(const Descriptor& parent, const std::string& name) {
  return Descriptor(::openat(parent.number(), name.c_str(), folderFlags | O_NOFOLLOW));
}

enum class Missing { fails, isMade };

Descriptor openRoot(const std::string& root, Missing missing) {
  std::error_code error;
  if (root.empty()) {
    errno = ENOENT;
    return Descriptor();
  }
  if (missing == Missing::isMade && std::filesystem::create_directories(root, error)) {
    ::chmod(root.c_str(), folderMode);
  }
  return Descriptor(::open(root.c_str(), folderFlags));
}

Descriptor openFolder(const std::string& root, const std::vector<std::string>& names,
                      Missing missing = Missing::fails) {
  Descriptor folder = openRoot(root, missing);
  for (const std::string& name : names) {
    if (!folder.isOpen()) break;
    if (missing == Missing::isMade && ::mkdirat(folder.number(), name.c_str(), folderMode) != 0 &&
        errno != EEXIST) {
      return Descriptor();
    }
    folder = openFolderIn(folder, name);
  }
  return folder;
}

// The last name of a path and the open folder that it lies in.
struct Entry {
  Descriptor folder;
  std::string name;
};

std::optional<Entry> entryOf(const std::string& root, std::string_view path) {
  auto names = namesOf(path);
  if (!names || names->empty()) {
    errno = EINVAL;
    return std::nullopt;
  }
  std::string name = std::move(names->back());
  names->pop_back();
  Descriptor folder = openFolder(root, *names);
  if (!folder.isOpen()) return std::nullopt;
  return Entry{std::move(folder), std::move(name)};
}

bool isKind(const std::string& root, std::string_view path, mode_t kind) {
  const auto entry = entryOf(root, path);
  struct stat status {};
  return entry &&
         ::fstatat(entry->folder.number(), entry->name.c_str(), &status, AT_SYMLINK_NOFOLLOW) ==
             0 &&
         (status.st_mode & S_IFMT) == kind;
}

std::optional<std::string> readAll(const Descriptor& file, std::size_t expected) {
  // One byte more than expected is asked for, so that the end is seen without growing.
  std::string contents(expected + 1, '\0');
  std::size_t size = 0;
  for (;;) {
    const ssize_t count = ::read(file.number(), contents.data() + size, contents.size() - size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    size += static_cast<std::size_t>(count);
    if (size == contents.size()) contents.resize(2 * size);
  }
  contents.resize(size);
  return contents;
}

bool writeAll(const Descriptor& file, std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t count = ::write(file.number(), contents.data(), contents.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    contents.remove_prefix(static_cast<std::size_t>(count));
  }
  return ::fsync(file.number()) == 0;
}

// Differs between processes and between calls.
std::string temporaryName() {
  static std::atomic<unsigned> count{0};
  return ".partial-" + std::to_string(::getpid()) + "-" + std::to_string(++count);
}

std::vector<std::string> namesIn(Descriptor folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(::fdopendir(folder.number()), ::closedir);
  if (stream == nullptr) return {};
  folder.release();
  std::vector<std::string> names;
  while (const dirent* entry = ::readdir(stream.get())) {
    if (std::string name = entry->d_name; isSafe(name)) names.push_back(std::move(name));
  }
  std::ranges::sort(names);
  return names;
}

// Holds one open folder a level; running out of them is an error like any other.
std::optional<FileError> removeIn(const Descriptor& parent, const std::string& name) {
  Descriptor folder = openFolderIn(parent, name);
  if (!folder.isOpen()) {
    // No folder, or a link to one.
    if (errno != ENOTDIR && errno != ELOOP) return lastError();
    if (::unlinkat(parent.number(), name.c_str(), 0) != 0) return lastError();
    return std::nullopt;
  }
  for (const std::string& inner : namesIn(Descriptor(::dup(folder.number())))) {
    if (auto error = removeIn(folder, inner)) return error;
  }
  if (::unlinkat(parent.number(), name.c_str(), AT_REMOVEDIR) != 0) return lastError();
  return std::nullopt;
}

std::string withoutEndingSlashes(std::string path) {
  while (path.ends_with('/')) path.pop_back();
  return path;
}

}  // namespace

PosixFiles::PosixFiles(std::string documentsFolder)
    : documentsFolder_(withoutEndingSlashes(std::move(documentsFolder))) {}

std::optional<std::string> PosixFiles::readFile(std::string_view path) const {
  const auto entry = entryOf(documentsFolder_, path);
  if (!entry) return std::nullopt;
  // A pipe in the file's stead would otherwise be waited for.
  const Descriptor file(::openat(entry->folder.number(), entry->name.c_str(),
                                 O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  return readAll(file, static_cast<std::size_t>(status.st_size));
}

std::optional<FileError> PosixFiles::createFile(std::string_view path, std::string_view contents) {
  const auto entry = entryOf(documentsFolder_, path);
  if (!entry) return lastError();
  const int folder = entry->folder.number();
  const std::string temporary = temporaryName();
  const Descriptor file(::openat(folder, temporary.c_str(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, fileMode));
  if (!file.isOpen()) return lastError();
  if (writeAll(file, contents) &&
      ::renameat(folder, temporary.c_str(), folder, entry->name.c_str()) == 0) {
    return std::nullopt;
  }
  FileError error = lastError();
  ::unlinkat(folder, temporary.c_str(), 0);
  return error;
}

bool PosixFiles::isFile(std::string_view path) const {
  return isKind(documentsFolder_, path, S_IFREG);
}

bool PosixFiles::isFolder(std::string_view path) const {
  const auto names = namesOf(path);
  return names && openFolder(documentsFolder_, *names).isOpen();
}

std::optional<FileError> PosixFiles::createFolders(std::string_view path) {
  const auto names = namesOf(path);
  if (!names) return errorOf(EINVAL);
  if (!openFolder(documentsFolder_, *names, Missing::isMade).isOpen()) return lastError();
  return std::nullopt;
}

std::vector<std::string> PosixFiles::list(std::string_view path) const {
  const auto names = namesOf(path);
  if (!names) return {};
  Descriptor folder = openFolder(documentsFolder_, *names);
  return folder.isOpen() ? namesIn(std::move(folder)) : std::vector<std::string>();
}

std::optional<FileError> PosixFiles::remove(std::string_view path) {
  const auto entry = entryOf(documentsFolder_, path);
  if (!entry) return lastError();
  return removeIn(entry->folder, entry->name);
}

}  // namespace tern::detail
