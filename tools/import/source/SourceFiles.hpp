// The files of a source of building data: those below a folder, or a single one.
//
//   const OpenedSource source = openSource("ShinyokohamaStation");
//   for (const std::string& name : source.files.names()) source.files.read(name);
//
// Links to other folders are not followed, and what is no plain file is passed over.
//
// Ownership: a plain value; the files are read when they are asked for. Threads: any.
// Fails: by value. A file of more than `mostFileBytes` is not read.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tern::imports {

inline constexpr std::size_t mostFileBytes = std::size_t{128} << 20U;
inline constexpr std::size_t mostFiles = 10'000;
inline constexpr int mostFolderDepth = 4;

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

  // That of the folder or file, without an ending.
  const std::string& name() const { return name_; }
  // Below the folder, with slashes between, sorted.
  const std::vector<std::string>& names() const { return names_; }

  ReadFile read(const std::string& name) const;

 private:
  std::filesystem::path root_;
  std::string name_;
  std::vector<std::string> names_;
};

struct [[nodiscard]] OpenedSource {
  SourceFiles files;
  std::optional<std::string> error;
};

OpenedSource openSource(const std::filesystem::path& source);

}  // namespace tern::imports
