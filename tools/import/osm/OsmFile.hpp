// Reads an OpenStreetMap file, as XML or in protocol buffers (.osm.pbf).
//
// Ownership: plain values. Threads: a free function; a few others help while it runs.
// Fails: by value, with one line. A file whose records would take more than `mostOsmBytes` in
// memory is not read, however small it is itself; nor is XML that declares entities.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "tools/import/osm/OsmData.hpp"

namespace tern::imports {

inline constexpr std::size_t mostOsmBytes = std::size_t{512} << 20U;

enum class OsmEncoding { xml, pbf };

struct [[nodiscard]] ReadOsmFile {
  OsmData data;
  // Why there is none.
  std::optional<std::string> error;
};

ReadOsmFile readOsmFile(std::string_view bytes, OsmEncoding encoding,
                        std::size_t mostBytes = mostOsmBytes);

}  // namespace tern::imports
