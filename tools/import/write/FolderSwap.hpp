// Writes a folder whole or not at all: beside its place, then put there in one step.
//
// Until `commit` all that is written lies in a folder of its own, ".NAME.importing" beside NAME;
// the step takes the place of what is there, which goes then. What a run that was killed left
// beside goes with the next one. Where the system cannot exchange two folders in one step, the old
// one is moved away first, and a run that was killed between is mended by the next. Two runs in one
// place wait for each other.
//
//   FolderSwap swap("/venues/station");
//   if (auto error = swap.begin()) ...
//   if (auto error = swap.write("full.json", text)) ...
//   if (auto error = swap.commit()) ...
//
// Ownership: the folder beside goes with the object when it was not put in its place.
// Threads: one. Fails: by a line that names the file.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "tools/import/write/FolderLock.hpp"

namespace tern::imports {

class FolderSwap {
 public:
  // The folder may be missing.
  explicit FolderSwap(const std::filesystem::path& folder);
  ~FolderSwap();
  FolderSwap(const FolderSwap&) = delete;
  FolderSwap& operator=(const FolderSwap&) = delete;

  using Problem = std::optional<std::string>;

  // Clears what an earlier run left, and looks whether the folder may be replaced: it is missing,
  // empty, or holds a venue folder and nothing else.
  [[nodiscard]] Problem begin();
  [[nodiscard]] Problem write(const std::string& path, std::string_view text);
  [[nodiscard]] Problem commit();

 private:
  Problem exchange();

  // Of the folder in which all of them lie.
  FolderLock lock_;
  std::filesystem::path folder_;
  std::filesystem::path beside_;
  // Where the old folder goes when there is no exchange in one step.
  std::filesystem::path before_;
};

}  // namespace tern::imports
