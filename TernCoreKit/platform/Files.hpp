/// @file
/// The files of the application's own documents folder. A host application may put its own file
/// system in place of the default one before it makes the first hub; most need no more than
///
///     setFileSystem(makeFileSystem(folderOfMyApplication));
///
/// The folder must be the application's own: a cache of another library version wipes it whole.
#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// Why a file operation failed.
struct [[nodiscard]] FileError {
  /// The system's number (errno).
  int code = 0;
  /// What the system says of it, as a line for a person.
  std::string text;
};

/// The files of one folder.
///
/// Every path is relative to the documents folder and may begin with "/"; empty names in it mean
/// nothing, so "" is the folder itself. Nothing outside the folder is ever touched: "." and "..", a
/// NUL and a name that the system cannot hold are errors, and a symbolic link below the folder is
/// never followed. It can be removed, and counts as neither file nor folder.
/// Threads: every operation may be called from any, several at once, and by several processes on
/// one folder.
/// Ownership: keeps nothing of its arguments.
/// Fails: by value; no operation throws, also where memory or descriptors run out.
class TERN_API FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Absolute, without a "/" at its end; empty when there is none, and then every operation fails.
  /// It need not exist yet.
  virtual std::string documentsFolder() const = 0;

  /// The whole file; absent when there is none, when it cannot be read, and when it is longer than
  /// `mostBytes`, of which no more is then held in memory.
  /// DEFAULT: whatever its length.
  virtual std::optional<std::string> readFile(
      std::string_view path,
      std::size_t mostBytes = std::numeric_limits<std::size_t>::max()) const = 0;
  /// Writes a file whose folder exists. Another file of that name is replaced as one step: whoever
  /// reads, also after a crash, finds the old contents or the new. What a crash leaves of a file
  /// under way is not listed, and goes with the next file that is written beside it.
  virtual std::optional<FileError> createFile(std::string_view path, std::string_view contents) = 0;
  /// Whether a file lies there; a link is none.
  virtual bool isFile(std::string_view path) const = 0;
  /// Whether a folder lies there; a link is none.
  virtual bool isFolder(std::string_view path) const = 0;
  /// With all missing parents; one that exists is no error.
  virtual std::optional<FileError> createFolders(std::string_view path) = 0;
  /// The names in a folder, sorted; none when it is missing or cannot be listed.
  virtual std::vector<std::string> list(std::string_view path) const = 0;
  /// Removes what crashes have left of files under way, in the folder and all folders below; what
  /// somebody is writing stays. DEFAULT: nothing, for a file system that leaves nothing behind.
  virtual void removeAbandoned(std::string_view path) { static_cast<void>(path); }
  /// A file, a link, or a folder with all that lies in it; a missing one is an error. The documents
  /// folder itself cannot be removed.
  virtual std::optional<FileError> remove(std::string_view path) = 0;
};

/// A file system of the default kind over that folder, which is made, for its user alone, when the
/// first folder in it is. The path to it may lead over symbolic links.
TERN_API std::shared_ptr<FileSystem> makeFileSystem(std::string documentsFolder);

/// The process-wide file system; never null. The default one has the folder "TernCoreKit" below
/// XDG_DATA_HOME, else below .local/share in the user's home.
/// Threads: any.
TERN_API std::shared_ptr<FileSystem> fileSystem();

/// Puts a file system in the place of the current one; null brings the default back. Caches that
/// exist keep theirs.
/// Threads: any.
TERN_API void setFileSystem(std::shared_ptr<FileSystem> fileSystem);

}  // namespace tern
