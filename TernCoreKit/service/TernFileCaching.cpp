#include "TernCoreKit/service/TernFileCaching.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/service/TernCoreUtils.hpp"

namespace tern::inline v5 {

namespace {

// What the file systems of phones and desktops hold.
constexpr std::size_t longestName = 255;

bool isStorable(std::string_view name) {
  return name != "." && name != ".." && name.size() <= longestName &&
         name.find('\0') == std::string_view::npos;
}

// Endpoints have ten names or so; a service that makes thousands of one id is up to no good.
constexpr std::size_t mostNames = 32;

bool isStorableKey(std::string_view key) {
  if (!key.empty() && key.front() != '/') return false;
  if (std::ranges::count(key, '/') > static_cast<std::ptrdiff_t>(mostNames)) return false;
  while (!key.empty()) {
    key.remove_prefix(1);
    const std::string_view name = key.substr(0, key.find('/'));
    if (!isStorable(name)) return false;
    key.remove_prefix(name.size());
  }
  return true;
}

void logUnread(const Value& key) {
  logSdk("a cached answer cannot be read or is longer than " +
         std::to_string(TernFileCaching::mostEntryBytes) + " bytes: " + key.printed());
}

void logTooLong(const Value& key) {
  logSdk("an answer is not cached, as it is longer than " +
         std::to_string(TernFileCaching::mostEntryBytes) + " bytes: " + key.printed());
}

TernError notFound(std::optional<std::string> message, std::string description) {
  return TernError::initWithErrorType(TernErrorTypeObjectNotFound, std::move(message),
                                      std::move(description));
}

}  // namespace

std::shared_ptr<TernFileCaching> TernFileCaching::initWithVersion(
    std::string version, std::shared_ptr<FileSystem> fileManager) {
  if (fileManager == nullptr) fileManager = fileSystem();
  const std::shared_ptr<TernFileCaching> cache(
      new TernFileCaching(std::move(version), std::move(fileManager)));
  cache->checkCacheVersion();
  return cache;
}

TernFileCaching::TernFileCaching(std::string version, std::shared_ptr<FileSystem> fileManager)
    : version_(std::move(version)), fileManager_(std::move(fileManager)) {}

std::optional<std::string> TernFileCaching::folderOf(const Value& key) const {
  if (!key.isText() || !isStorableKey(key.text())) return std::nullopt;
  return std::string(directoryName()) + "/" + version_ + std::string(key.text());
}

std::optional<std::string> TernFileCaching::fileOf(const Value& key) const {
  auto folder = folderOf(key);
  if (folder) *folder += fullCallFileName();
  return folder;
}

void TernFileCaching::getCacheFileAtPath(const Value& key, const ReadCompletion& completion) const {
  const auto read = [&] {
    const auto file = fileOf(key);
    auto data = file ? fileManager_->readFile(*file, mostEntryBytes) : std::nullopt;
    if (!data && file && fileManager_->isFile(*file)) {
      // It may have come in between.
      data = fileManager_->readFile(*file, mostEntryBytes);
      if (!data) logUnread(key);
    }
    if (!data) {
      return completion(notFound(std::nullopt, "No data found in cache for path: " + key.printed()),
                        {});
    }
    TernCoreUtils::parseJSONWithData(
        std::move(*data), [&](std::optional<std::string> error, Value answer) {
          if (error) return completion(notFound(std::nullopt, std::move(*error)), {});
          completion(std::nullopt, std::move(answer));
        });
  };
  if (!detail::attempt(read)) completion(notFound(detail::outOfMemory, detail::outOfMemory), {});
}

bool TernFileCaching::doesFileExistsAtPath(const Value& key) const {
  const auto file = fileOf(key);
  return file && fileManager_->isFile(*file);
}

bool TernFileCaching::doesDirectoryExistsAtPath(const Value& key) const {
  const auto folder = folderOf(key);
  return folder && fileManager_->isFolder(*folder);
}

bool TernFileCaching::createDirectoryWithPath(const Value& key) const {
  const auto folder = folderOf(key);
  if (!folder || fileManager_->isFolder(*folder)) return false;
  const auto error = fileManager_->createFolders(*folder);
  if (error) logLine("Create directory error: " + error->text);
  return !error;
}

bool TernFileCaching::saveData(std::string_view data, const Value& key) const {
  bool isSaved = false;
  detail::attempt([&] { isSaved = save(data, key); });
  return isSaved;
}

bool TernFileCaching::save(std::string_view data, const Value& key) const {
  const auto file = fileOf(key);
  if (!file || key.text().empty()) {
    logLine("No key to save under: " + key.printed());
    return false;
  }
  if (data.size() > mostEntryBytes) {
    logTooLong(key);
    return false;
  }
  if (!doesDirectoryExistsAtPath(key) && !createDirectoryWithPath(key) &&
      !doesDirectoryExistsAtPath(key)) {
    return false;
  }
  const auto error = fileManager_->createFile(*file, data);
  if (error) {
    logLine("Error was code: " + std::to_string(error->code) + " - message: " + error->text);
  }
  return !error;
}

bool TernFileCaching::replaceData(std::string_view data, const Value& key,
                                  const Completion& completion) const {
  const bool isReplaced = doesFileExistsAtPath(key);
  const bool isSaved = saveData(data, key);
  if (isReplaced) {
    if (auto error = emptyFolder(*folderOf(key), fullCallFileName().substr(1))) {
      completion(std::move(error));
    }
  }
  return isSaved;
}

std::optional<TernError> TernFileCaching::emptyFolder(const std::string& folder,
                                                      std::string_view keeping) const {
  for (const std::string& name : fileManager_->list(folder)) {
    if (name == keeping) continue;
    if (auto error = fileManager_->remove(folder + "/" + name)) {
      return notFound("Could not remove file at path: " + documentFolder() + folder,
                      error->text.empty() ? "No file found at path" : std::move(error->text));
    }
  }
  return std::nullopt;
}

void TernFileCaching::deleteFileAtPath(const Value& key, const Completion& completion) const {
  if (!key.isText()) {
    return completion(TernError::initWithErrorType(
        TernErrorTypeIncorrectObjectType, "Could not remove file at path: " + key.printed()));
  }
  const auto folder = folderOf(key);
  completion(folder ? emptyFolder(*folder, {}) : std::nullopt);
}

void TernFileCaching::clearCacheCompletion(const Completion& completion) const {
  for (const std::string& name : fileManager_->list("")) {
    if (const auto error = fileManager_->remove(name)) {
      return completion(
          notFound("Error removing file", "Error removing file at path: " + error->text));
    }
  }
  completion(std::nullopt);
}

void TernFileCaching::checkCacheVersion() const {
  fileManager_->removeAbandoned(directoryName());
  const auto names = fileManager_->list(directoryName());
  if (std::ranges::all_of(names, [&](const std::string& name) { return name == version_; })) return;
  clearCacheCompletion([](const std::optional<TernError>& error) {
    if (error) logLine("Automatic Clear Cache Error: " + error->errorDescription);
  });
}

}  // namespace tern
