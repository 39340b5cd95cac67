// Counts what an OpenStreetMap file in protocol buffers would take in memory, block by block and
// without building anything of it.
//
// Threads: a free function. Fails: by value, with one line.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tools/import/osm/OsmBudget.hpp"

namespace tern::imports {

// Blocks that unpack to more than this are refused, as the format does.
inline constexpr std::size_t mostBlockBytes = std::size_t{32} << 20U;
// Of all blocks together, unpacked.
inline constexpr std::size_t mostUnpackedBytes = std::size_t{1} << 30U;

// Why the file cannot be read; none where it fits into the budget.
std::optional<std::string> spendOnPbf(std::string_view bytes, OsmBudget& budget);

}  // namespace tern::imports
