#include "TernCoreKit/platform/detail/PosixFiles.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

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

using Names = std::vector<std::string>;

FileError errorOf(int code) {
  FileError error{code, {}};
  attempt([&] { error.text = std::generic_category().message(code); });
  return error;
}
FileError lastError() { return errorOf(errno); }

// What the work comes to, or that there was no memory for it.
template <class Work>
std::optional<FileError> orOutOfMemory(Work work) {
  std::optional<FileError> error;
  return attempt([&] { error = work(); }) ? std::move(error) : errorOf(ENOMEM);
}

// What the work comes to; nothing when there was no memory for it.
template <class Result, class Work>
Result orNothing(Work work) {
  Result result{};
  return attempt([&] { result = work(); }) ? std::move(result) : Result{};
}

bool isSafe(std::string_view name) {
  return name != "." && name != ".." && name.find('\0') == std::string_view::npos;
}

// The names of a path, empty ones left out; none at all when one of them leads elsewhere.
std::optional<Names> namesOf(std::string_view path) {
  Names names;
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

// The names that have come into the folder are to outlast a power cut too.
void syncNames(const Descriptor& folder) { ::fsync(folder.number()); }

// With those above it that are missing; whether it was made.
bool makeRoot(const std::filesystem::path& root) {
  std::error_code error;
  if (root.empty() || std::filesystem::is_directory(root, error)) return false;
  const std::filesystem::path parent = root.parent_path();
  if (parent != root) makeRoot(parent);
  if (!std::filesystem::create_directory(root, error)) return false;
  const Descriptor above(::open(parent.empty() ? "." : parent.c_str(), folderFlags));
  if (above.isOpen()) syncNames(above);
  return true;
}

Descriptor openRoot(const std::string& root, Missing missing) {
  if (root.empty()) {
    errno = ENOENT;
    return Descriptor();
  }
  if (missing == Missing::isMade && makeRoot(root)) ::chmod(root.c_str(), folderMode);
  return Descriptor(::open(root.c_str(), folderFlags));
}

Descriptor openFolder(const std::string& root, const Names& names,
                      Missing missing = Missing::fails) {
  Descriptor folder = openRoot(root, missing);
  for (const std::string& name : names) {
    if (!folder.isOpen()) break;
    if (missing == Missing::isMade) {
      const bool isMade = ::mkdirat(folder.number(), name.c_str(), folderMode) == 0;
      if (!isMade && errno != EEXIST) return Descriptor();
      if (isMade) syncNames(folder);
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

// Absent when it cannot be read or has grown beyond the most.
std::optional<std::string> readAll(const Descriptor& file, std::size_t expected, std::size_t most) {
  // One byte more than expected is asked for, so that the end is seen without growing.
  std::string contents(expected + 1, '\0');
  std::size_t size = 0;
  for (;;) {
    const ssize_t count = ::read(file.number(), contents.data() + size, contents.size() - size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    size += static_cast<std::size_t>(count);
    if (size > most) return std::nullopt;
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

constexpr std::string_view underWay = ".partial-";

// Differs between calls and, nearly always, between processes: those of containers often share
// their number.
std::string freshName() {
  static std::atomic<unsigned> count{0};
  struct timespec now {};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return std::string(underWay) + std::to_string(::getpid()) + "-" + std::to_string(now.tv_sec) +
         "-" + std::to_string(now.tv_nsec) + "-" + std::to_string(++count);
}

// A file under way, locked by its writer as long as that lives, which is how others tell it from
// one that a crash has left.
struct PartialFile {
  Descriptor file;
  std::string name;
};

PartialFile makePartial(const Descriptor& folder) {
  constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  constexpr int mostTries = 100;
  PartialFile made;
  for (int i = 0; i < mostTries; ++i) {
    made.name = freshName();
    made.file = Descriptor(::openat(folder.number(), made.name.c_str(), flags, fileMode));
    if (!made.file.isOpen() && errno != EEXIST) break;
    if (!made.file.isOpen()) continue;
    ::flock(made.file.number(), LOCK_EX);
    // Before it was locked, somebody may have taken it for a dead one.
    struct stat status {};
    if (::fstat(made.file.number(), &status) == 0 && status.st_nlink > 0) break;
  }
  return made;
}

// Absent, with `errno` set, when they cannot be told.
std::optional<Names> namesIn(Descriptor folder) {
  if (!folder.isOpen()) return std::nullopt;
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(::fdopendir(folder.number()), ::closedir);
  if (stream == nullptr) return std::nullopt;
  folder.release();
  Names names;
  errno = 0;
  while (const dirent* entry = ::readdir(stream.get())) {
    if (std::string name = entry->d_name; isSafe(name)) names.push_back(std::move(name));
    errno = 0;
  }
  if (errno != 0) return std::nullopt;
  std::ranges::sort(names);
  return names;
}

std::optional<Names> namesOfOpen(const Descriptor& folder) {
  return namesIn(Descriptor(::openat(folder.number(), ".", folderFlags)));
}

// Removes the files in the folder that nobody is writing any more.
void removeDead(const Descriptor& folder) {
  const auto names = namesOfOpen(folder);
  if (!names) return;
  for (const std::string& name : *names) {
    if (!name.starts_with(underWay)) continue;
    const Descriptor file(
        ::openat(folder.number(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file.isOpen() && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0) {
      ::unlinkat(folder.number(), name.c_str(), 0);
    }
  }
}

bool unlinkIn(const Descriptor& folder, const std::string& name, int flags = 0) {
  return ::unlinkat(folder.number(), name.c_str(), flags) == 0;
}

// Moves all that lies in an inner folder up into the outer one, and removes it.
std::optional<FileError> dissolve(const Descriptor& outer, const std::string& name) {
  const Descriptor inner = openFolderIn(outer, name);
  if (!inner.isOpen()) return lastError();
  const auto names = namesOfOpen(inner);
  if (!names) return lastError();
  for (const std::string& each : *names) {
    if (::renameat(inner.number(), each.c_str(), outer.number(), freshName().c_str()) != 0) {
      return lastError();
    }
  }
  if (!unlinkIn(outer, name, AT_REMOVEDIR)) return lastError();
  return std::nullopt;
}

// However deep folders lie in each other, two are open at a time.
std::optional<FileError> removeContents(const Descriptor& folder) {
  for (;;) {
    const auto names = namesOfOpen(folder);
    if (!names) return lastError();
    if (names->empty()) return std::nullopt;
    for (const std::string& name : *names) {
      if (unlinkIn(folder, name) || unlinkIn(folder, name, AT_REMOVEDIR)) continue;
      if (errno != ENOTEMPTY && errno != EEXIST) return lastError();
      if (auto error = dissolve(folder, name)) return error;
    }
  }
}

std::optional<FileError> removeIn(const Descriptor& parent, const std::string& name) {
  const Descriptor folder = openFolderIn(parent, name);
  if (!folder.isOpen()) {
    // No folder, or a link to one.
    if (errno != ENOTDIR && errno != ELOOP) return lastError();
    if (!unlinkIn(parent, name)) return lastError();
    return std::nullopt;
  }
  if (auto error = removeContents(folder)) return error;
  if (!unlinkIn(parent, name, AT_REMOVEDIR)) return lastError();
  return std::nullopt;
}

std::optional<std::string> readBelow(const std::string& root, std::string_view path,
                                     std::size_t mostBytes) {
  const auto entry = entryOf(root, path);
  if (!entry) return std::nullopt;
  // A pipe in the file's stead would otherwise be waited for.
  const Descriptor file(::openat(entry->folder.number(), entry->name.c_str(),
                                 O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  const auto size = static_cast<std::size_t>(status.st_size);
  return size <= mostBytes ? readAll(file, size, mostBytes) : std::nullopt;
}

std::optional<FileError> createBelow(const std::string& root, std::string_view path,
                                     std::string_view contents) {
  const auto entry = entryOf(root, path);
  if (!entry) return lastError();
  const int folder = entry->folder.number();
  const PartialFile partial = makePartial(entry->folder);
  if (!partial.file.isOpen()) return lastError();
  if (!writeAll(partial.file, contents) ||
      ::renameat(folder, partial.name.c_str(), folder, entry->name.c_str()) != 0) {
    FileError error = lastError();
    unlinkIn(entry->folder, partial.name);
    return error;
  }
  syncNames(entry->folder);
  attempt([&] { removeDead(entry->folder); });
  return std::nullopt;
}

// Whoever asks for its names takes the folder for an empty one.
void logUnlisted(std::string_view path) {
  const int code = errno;
  if (code == ENOENT || code == ENOTDIR || code == ELOOP) return;
  logSdk("the folder \"" + std::string(path) + "\" cannot be listed: " + errorOf(code).text);
}

Names listBelow(const std::string& root, std::string_view path) {
  const auto names = namesOf(path);
  if (!names) return {};
  auto found = namesIn(openFolder(root, *names));
  if (!found) logUnlisted(path);
  Names listed = std::move(found).value_or(Names());
  std::erase_if(listed, [](const std::string& name) { return name.starts_with(underWay); });
  return listed;
}

void removeDeadBelow(const std::string& root, std::string_view path) {
  const auto names = namesOf(path);
  if (!names) return;
  std::vector<Names> folders = {*names};
  while (!folders.empty()) {
    const Names at = std::move(folders.back());
    folders.pop_back();
    const Descriptor folder = openFolder(root, at);
    if (!folder.isOpen()) continue;
    removeDead(folder);
    for (const std::string& name : namesOfOpen(folder).value_or(Names())) {
      if (!openFolderIn(folder, name).isOpen()) continue;
      folders.push_back(at);
      folders.back().push_back(name);
    }
  }
}

std::string withoutEndingSlashes(std::string path) {
  while (path.ends_with('/')) path.pop_back();
  return path;
}

}  // namespace

PosixFiles::PosixFiles(std::string documentsFolder)
    : documentsFolder_(withoutEndingSlashes(std::move(documentsFolder))) {}

std::string PosixFiles::documentsFolder() const {
  return orNothing<std::string>([&] { return documentsFolder_; });
}

std::optional<std::string> PosixFiles::readFile(std::string_view path,
                                                std::size_t mostBytes) const {
  using Contents = std::optional<std::string>;
  return orNothing<Contents>([&] { return readBelow(documentsFolder_, path, mostBytes); });
}

std::optional<FileError> PosixFiles::createFile(std::string_view path, std::string_view contents) {
  return orOutOfMemory([&] { return createBelow(documentsFolder_, path, contents); });
}

bool PosixFiles::isFile(std::string_view path) const {
  return orNothing<bool>([&] { return isKind(documentsFolder_, path, S_IFREG); });
}

bool PosixFiles::isFolder(std::string_view path) const {
  return orNothing<bool>([&] {
    const auto names = namesOf(path);
    return names && openFolder(documentsFolder_, *names).isOpen();
  });
}

std::optional<FileError> PosixFiles::createFolders(std::string_view path) {
  return orOutOfMemory([&]() -> std::optional<FileError> {
    const auto names = namesOf(path);
    if (!names) return errorOf(EINVAL);
    if (openFolder(documentsFolder_, *names, Missing::isMade).isOpen()) return std::nullopt;
    return lastError();
  });
}

std::vector<std::string> PosixFiles::list(std::string_view path) const {
  return orNothing<Names>([&] { return listBelow(documentsFolder_, path); });
}

void PosixFiles::removeAbandoned(std::string_view path) {
  attempt([&] { removeDeadBelow(documentsFolder_, path); });
}

std::optional<FileError> PosixFiles::remove(std::string_view path) {
  return orOutOfMemory([&]() -> std::optional<FileError> {
    const auto entry = entryOf(documentsFolder_, path);
    if (!entry) return lastError();
    return removeIn(entry->folder, entry->name);
  });
}

}  // namespace tern::detail
