// The files of a source of building data: those below a folder, those in a .zip archive, or a
// single one.
//
//   const OpenedSource source = openSource("ShinyokohamaStation");
//   for (const std::string& name : source.files.names()) source.files.read(name);
//
// Links to other folders are not followed. What is no plain file is passed over, and what macOS
// puts beside files.
//
// Ownership: a plain value, of which copies share an archive; the files are read when they are
// asked for. Threads: one caller at a time. Fails: by value. A file of more than `mostFileBytes` is
// not read.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/import/source/ZipArchive.hpp"

namespace tern::imports {

inline constexpr std::size_t mostFileBytes = std::size_t{128} << 20U;
inline constexpr std::size_t mostFiles = 10'000;
inline constexpr int mostFolderDepth = 4;

// Whether it is what macOS packs beside a file: "__MACOSX/site/._unit.geojson".
bool isOfMacOs(std::string_view name);

struct [[nodiscard]] ReadFile {
  std::string text;
  // Why there is none.
  std::optional<std::string> error;
};

class SourceFiles {
 public:
  SourceFiles() = default;
  SourceFiles(std::filesystem::path root, std::string name, std::vector<std::string> names)
      : root_(std::move(root)), name_(std::move(name)), names_(std::move(names)) {}
  SourceFiles(std::string name, std::shared_ptr<const ZipArchive> archive)
      : name_(std::move(name)), names_(archive->names()), archive_(std::move(archive)) {}

  // That of the folder or file, without an ending.
  const std::string& name() const { return name_; }
  // Below the folder or in the archive, with slashes between, sorted.
  const std::vector<std::string>& names() const { return names_; }

  ReadFile read(const std::string& name) const;

 private:
  std::filesystem::path root_;
  std::string name_;
  std::vector<std::string> names_;
  // None for what lies in a folder.
  std::shared_ptr<const ZipArchive> archive_;
};

struct [[nodiscard]] OpenedSource {
  SourceFiles files;
  std::optional<std::string> error;
};

OpenedSource openSource(const std::filesystem::path& source);

}  // namespace tern::imports
