// Reads the Indoor Mapping Data Format 1.0 (OGC 20-094), whose units and openings become ways.
//
// Threads: free functions. Fails: by value, with one line.
#pragma once

#include "tools/import/draft/ReadDraft.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

ReadDraft readImdf(const SourceFiles& source);

}  // namespace tern::imports
