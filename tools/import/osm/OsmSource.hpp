// The OpenStreetMap files of a source, put together to one.
//
// Ownership: plain values. Threads: free functions. Fails: by value, with one line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/import/draft/Oddities.hpp"
#include "tools/import/osm/OsmData.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

struct [[nodiscard]] ReadOsmSource {
  OsmData data;
  std::uint64_t stamp = 0;
  std::optional<std::string> error;
};

// Whether a file of the source ends like one (.osm, .osm.xml, .osm.pbf), or its only file begins
// like one.
bool isOsmIn(const SourceFiles& files);
// A single file is read whatever it is called. Of a record that is in several files, the first
// counts. One whose nodes are partly missing is told of and keeps the others.
ReadOsmSource readOsmSource(const SourceFiles& files, Oddities& oddities);

}  // namespace tern::imports
