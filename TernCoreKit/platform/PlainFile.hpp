/// @file
/// Reads files that lie wherever the application says, such as those of a venue folder. What the
/// library keeps for itself is in Files.hpp.
///
/// Ownership: nothing is kept.
/// Threads: any.
/// Fails: by value.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Files.hpp"

namespace tern::inline v5 {

/// The whole file of that path, over symbolic links where they lead to one. Only plain files are
/// opened: reading a pipe or a device might never end. The error's code is ENOENT for one that is
/// not there and EFBIG for one of more bytes than `mostBytes`, which is not read.
[[nodiscard]] TERN_API std::variant<std::string, FileError> readPlainFile(const std::string& path,
                                                                          std::uintmax_t mostBytes);

/// Whether the path leads to a folder.
[[nodiscard]] TERN_API bool isFolderAt(const std::string& path);

}  // namespace tern
