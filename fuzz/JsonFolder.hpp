// Sources that are folders of JSON files, as one input: a map of the files' names to what they
// hold. A text is the file as it stands, and need not be JSON.
//
// Threads: one. Fails: by `require`.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tests/support/TemporaryFolder.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::fuzz {

using FileNames = std::span<const std::string_view>;

// Those of the named files that the input has, as a source to check.
void checkFolderOf(const std::string& input, FileNames names,
                   void (*check)(const imports::SourceFiles&));

// Those of the named files that are in the folder, as an input.
std::string inputOf(const test::TemporaryFolder& folder, FileNames names);

}  // namespace tern::fuzz
