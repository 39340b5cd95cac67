// Reads pedestrian networks: node and link GeoJSON with floor ordinals, and the floor plans that
// lie beside them.
//
// All parts of a site are one building, and all floors of one ordinal are one floor.
//
// Threads: free functions. Fails: by value, with one line.
#pragma once

#include <optional>
#include <string>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

struct [[nodiscard]] ReadDraft {
  Draft draft;
  // Why there is none.
  std::optional<std::string> error;
};

ReadDraft readNetwork(const SourceFiles& source);

}  // namespace tern::imports
