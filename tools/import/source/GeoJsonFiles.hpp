// The GeoJSON files of a source, read.
//
//   const GeoJsonFiles files = readGeoJsonFiles(source);
//   for (const GeoJsonFile& file : files.files) featuresOf(file, told);
//
// Ownership: owns the documents. Threads: free functions. Fails: by value; a file that cannot be
// read says why, and the others count.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/draft/Hash.hpp"
#include "tools/import/draft/Oddities.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

struct GeoJsonFile {
  std::string name;
  Value document;
  // Why there is none, in a sentence.
  std::optional<std::string> error;
};

struct GeoJsonFiles {
  std::vector<GeoJsonFile> files;
  // Differs with every change of a file.
  std::uint64_t stamp = emptyHash;
};

// By the end of its name.
bool isGeoJson(std::string_view file);

GeoJsonFiles readGeoJsonFiles(const SourceFiles& source);

// A text, or a whole number as a text; empty for what is no id.
std::string idOf(const Value& value);

// Null, and told of, where the file cannot be read or has no list of them.
const Value* featuresOf(const GeoJsonFile& file, Oddities& told);

}  // namespace tern::imports
