#include "tools/tern/CacheFolder.hpp"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "TernCoreKit/platform/Files.hpp"

namespace tern::command {

namespace {

namespace fs = std::filesystem;

// XDG_DATA_HOME counts only when it is absolute.
std::string dataFolder() {
  const char* const data = std::getenv("XDG_DATA_HOME");
  if (data != nullptr && *data == '/') return data;
  const char* const home = std::getenv("HOME");
  return home != nullptr && *home == '/' ? std::string(home) + "/.local/share" : std::string();
}

// The text as a file's name; different texts get different names.
std::string asName(const std::string& text) {
  constexpr const char* digits = "0123456789ABCDEF";
  std::string name;
  for (const char letter : text) {
    const auto byte = static_cast<unsigned char>(letter);
    if (std::isalnum(byte) != 0 || letter == '.' || letter == '-') {
      name += letter;
    } else {
      name.append({'%', digits[byte >> 4U], digits[byte & 15U]});
    }
  }
  return name;
}

// The first thing there that no cache has made.
std::optional<std::string> strangerIn(const FileSystem& files) {
  const auto onlyFolder = [&](const std::string& path,
                              const std::string& wanted) -> std::optional<std::string> {
    for (const std::string& name : files.list(path)) {
      if (name != wanted || !files.isFolder(path + "/" + name)) return path + "/" + name;
    }
    return std::nullopt;
  };
  if (const auto stranger = onlyFolder("", "Tern")) return stranger;
  if (const auto stranger = onlyFolder("/Tern", "cache")) return stranger;
  for (const std::string& name : files.list("/Tern/cache")) {
    const bool isVersion = name.find_first_not_of("0123456789.") == std::string::npos;
    if (!isVersion || !files.isFolder("/Tern/cache/" + name)) return "/Tern/cache/" + name;
  }
  return std::nullopt;
}

}  // namespace

std::variant<std::string, Failure> cacheFolder(const HostOptions& options) {
  std::error_code error;
  std::string folder = options.cache;
  if (folder.empty()) {
    const std::string data = dataFolder();
    if (data.empty()) return wrongWords("--cache DIR is missing, and no home folder is known");
    folder = data + "/tern/" + asName(options.host) + "/" + std::to_string(options.customer);
  }
  const fs::path absolute = fs::absolute(folder, error);
  const fs::file_status status = fs::status(absolute, error);
  if (fs::exists(status) && !fs::is_directory(status)) {
    return wrongWords("--cache: " + folder + " is no folder");
  }
  if (const auto stranger = strangerIn(*makeFileSystem(absolute.string()))) {
    return wrongWords("--cache: " + folder + " holds " + stranger->substr(1) +
                      ", which is not the cache's; name a new or an empty folder");
  }
  return absolute.string();
}

}  // namespace tern::command
