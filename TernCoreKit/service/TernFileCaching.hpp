#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// Keeps the last answer of each endpoint of the service on disk, in the documents folder D:
///
///     D/Tern/cache/<version><key>/data.json
///
/// A key is an endpoint's path and query; it begins with "/", and each name in it becomes a folder.
/// A key that would leave the version's folder or that the file system cannot hold (".", "..", a
/// NUL, a name of more than 255 bytes) is never stored: nothing is read, written or removed for it.
/// Keys are Values because not being a text is one of the errors that are reported.
///
/// An answer of more than `mostEntryBytes` is neither written nor read; one line in the log says
/// so.
///
/// Ownership: shares its file system. Threads: any; two processes may use one folder. All work is
/// done, and every completion called, before the call returns.
/// Fails: by false or by a TernError.
///
///     const auto cache = TernFileCaching::initWithVersion("5.12.2");
///     cache->saveData(R"({"id": 7})", "/venue/7/full?v=4.12");
///     cache->getCacheFileAtPath("/venue/7/full?v=4.12", [](auto error, Value answer) { ... });
class TERN_API TernFileCaching {
 public:
  /// Absent: it succeeded.
  using Completion = std::function<void(std::optional<TernError> error)>;
  /// The answer is what the file holds, of whatever kind; absent with an error.
  using ReadCompletion = std::function<void(std::optional<TernError> error, Value answer)>;

  /// The most bytes of one entry, 512 MiB: as many as the longest body that the default transport
  /// takes.
  static constexpr std::size_t mostEntryBytes = std::size_t{512} << 20U;

  /// Checks the version, which may wipe the documents folder. Without a file system: the process's.
  static std::shared_ptr<TernFileCaching> initWithVersion(
      std::string version, std::shared_ptr<FileSystem> fileManager = nullptr);

  /// The version that names its folder.
  const std::string& version() const { return version_; }
  /// Where it reads and writes; never null.
  const std::shared_ptr<FileSystem>& fileManager() const { return fileManager_; }

  /// The folder of all versions, in the documents folder.
  static std::string_view directoryName() { return "/Tern/cache"; }
  /// The file of an answer, in the folder of its key.
  static std::string_view fullCallFileName() { return "/data.json"; }
  /// The documents folder, as the file system names it.
  std::string documentFolder() const { return fileManager_->documentsFolder(); }

  /// Reads and decodes the answer of the key.
  void getCacheFileAtPath(const Value& key, const ReadCompletion& completion) const;
  /// Whether the key has an answer.
  bool doesFileExistsAtPath(const Value& key) const;
  /// Whether the key has a folder.
  bool doesDirectoryExistsAtPath(const Value& key) const;
  /// True only when the folder was made by this call.
  bool createDirectoryWithPath(const Value& key) const;
  /// Replaces what the entry held; a crash leaves the old answer or the new.
  bool saveData(std::string_view data, const Value& key) const;
  /// What `deleteFileAtPath` and then `saveData` would leave, without a moment in which neither the
  /// old answer nor the new is there; when saving fails the old one stays. The completion is called
  /// only with an error of the deletion.
  bool replaceData(std::string_view data, const Value& key, const Completion& completion) const;

  /// Empties the entry's folder; a missing one is no error.
  void deleteFileAtPath(const Value& key, const Completion& completion) const;
  /// Removes everything in the documents folder, on purpose also what is not the cache's.
  void clearCacheCompletion(const Completion& completion) const;
  /// Does that when anything but the folder of this version lies among the cached versions.
  void checkCacheVersion() const;

 private:
  TernFileCaching(std::string version, std::shared_ptr<FileSystem> fileManager);

  // The entry's folder, relative to the documents folder; none for a key that is never stored.
  std::optional<std::string> folderOf(const Value& key) const;
  std::optional<std::string> fileOf(const Value& key) const;
  // As saveData, where there is memory enough.
  TERN_INTERNAL bool save(std::string_view data, const Value& key) const;
  // Removes what lies in the folder but the one name; the first failure ends it.
  std::optional<TernError> emptyFolder(const std::string& folder, std::string_view keeping) const;

  const std::string version_;
  const std::shared_ptr<FileSystem> fileManager_;
};

}  // namespace tern
