// The files of a .zip archive, by name. They are only ever unpacked into memory.
//
//   const OpenedZip zip = openZip("feed.zip");
//   if (zip.archive) zip.archive->read("stops.txt");
//
// An archive is anyone's: one of more than `mostFiles` entries is not opened, nor one that says it
// unpacks to more than `mostUnpacking` times its size. An entry is unpacked up to what it says, and
// up to `mostFileBytes`; one that goes on is damaged. Entries whose names lead out of a folder
// ("..", a leading slash, a drive, a backslash) are passed over.
//
// Ownership: owns the open archive. Threads: one caller at a time.
// Fails: by value, with a sentence.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct zip;

namespace tern::imports {

// Deflate makes 1 of 1032 at most, of nothing but one letter; tables make 1 of 20.
inline constexpr std::size_t mostUnpacking = 200;

struct ReadFile;

class ZipArchive {
 public:
  ZipArchive(zip* archive, std::vector<std::string> names)
      : archive_(archive), names_(std::move(names)) {}
  ~ZipArchive();
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;

  // Sorted.
  const std::vector<std::string>& names() const { return names_; }
  ReadFile read(const std::string& name) const;

 private:
  zip* archive_;
  std::vector<std::string> names_;
};

struct [[nodiscard]] OpenedZip {
  std::shared_ptr<const ZipArchive> archive;
  std::optional<std::string> error;
};

OpenedZip openZip(const std::filesystem::path& file);

// Whether it begins as an archive does, or is named as one.
bool isZip(const std::filesystem::path& file);

}  // namespace tern::imports
