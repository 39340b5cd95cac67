// The JSON documents of imported venues, as a mapping service would answer them.
//
// Threads: free functions. Fails: never.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tools/documents/MapTemplate.hpp"
#include "tools/import/write/VenuePlan.hpp"

namespace tern::imports {

// That which the venue document names.
inline constexpr documents::MapTemplate mapTemplate{
    .id = "import", .name = "Import", .background = "#eef0ee", .label = "#30363d"};

// REQUIRES: at least one venue.
std::string customerDocument(std::string_view name, std::span<const VenuePlan> venues);
std::string localesDocument(std::span<const VenuePlan> venues);
std::string venueDocument(const VenuePlan& venue);
std::string buildingDocument(const VenuePlan& venue, std::size_t building);
std::string destinationsDocument(const VenuePlan& venue);

}  // namespace tern::imports
