#include "tools/import/source/SourceFiles.hpp"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>

namespace tern::imports {

namespace fs = std::filesystem;

namespace {

OpenedSource failed(std::string error) {
  OpenedSource opened;
  opened.error = std::move(error);
  return opened;
}

fs::path namedFolder(const fs::path& folder) {
  std::error_code error;
  const fs::path whole = fs::weakly_canonical(folder, error);
  if (error) return folder;
  return whole.has_filename() ? whole : whole.parent_path();
}

OpenedSource openFolder(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, error);
  if (error) return failed(folder.string() + ": " + error.message());
  for (const fs::recursive_directory_iterator end; !error && entry != end; entry.increment(error)) {
    if (entry.depth() + 1 >= mostFolderDepth) entry.disable_recursion_pending();
    std::error_code ignored;
    if (!entry->is_regular_file(ignored)) continue;
    if (names.size() == mostFiles) {
      return failed(folder.string() + " holds more than " + std::to_string(mostFiles) + " files");
    }
    std::string name = entry->path().lexically_relative(folder).generic_string();
    if (!isOfMacOs(name)) names.push_back(std::move(name));
  }
  if (error) return failed("a folder in " + folder.string() + ": " + error.message());
  std::ranges::sort(names);
  return {{folder, namedFolder(folder).filename().string(), std::move(names)}, std::nullopt};
}

OpenedSource openArchive(const fs::path& file) {
  OpenedZip opened = openZip(file);
  if (opened.error) return failed(*std::move(opened.error));
  return {{file.stem().string(), std::move(opened.archive)}, std::nullopt};
}

}  // namespace

bool isOfMacOs(std::string_view name) {
  while (!name.empty()) {
    const std::size_t slash = std::min(name.find('/'), name.size());
    if (name.starts_with("._") || name.substr(0, slash) == "__MACOSX") return true;
    name.remove_prefix(std::min(slash + 1, name.size()));
  }
  return false;
}

ReadFile SourceFiles::read(const std::string& name) const {
  if (archive_) return archive_->read(name);
  const fs::path file = root_ / name;
  std::error_code error;
  const std::uintmax_t size = fs::file_size(file, error);
  if (error) return {{}, name + ": " + error.message()};
  if (size > mostFileBytes) {
    return {{}, name + " is larger than " + std::to_string(mostFileBytes >> 20U) + " MiB"};
  }
  std::string text(static_cast<std::size_t>(size), '\0');
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  if (!stream.is_open()) return {{}, name + ": " + std::generic_category().message(errno)};
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (!stream) return {{}, name + " cannot be read to its end"};
  return {std::move(text), std::nullopt};
}

OpenedSource openSource(const fs::path& source) {
  std::error_code error;
  const fs::file_status status = fs::status(source, error);
  if (status.type() == fs::file_type::not_found) return failed("there is no " + source.string());
  if (error) return failed(source.string() + ": " + error.message());
  if (fs::is_directory(status)) return openFolder(source);
  if (!fs::is_regular_file(status)) return failed(source.string() + " is no file and no folder");
  if (isZip(source)) return openArchive(source);
  return {{source.parent_path(), source.stem().string(), {source.filename().string()}},
          std::nullopt};
}

}  // namespace tern::imports
