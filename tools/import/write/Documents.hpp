// The JSON documents of imported venues, as a mapping service would answer them.
//
// Threads: free functions. Fails: never.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tools/import/write/VenuePlan.hpp"

namespace tern::imports {

inline constexpr std::string_view mapTemplateId = "import";

// REQUIRES: at least one venue.
std::string customerDocument(std::string_view name, std::span<const VenuePlan> venues);
std::string localesDocument(std::span<const VenuePlan> venues);
std::string venueDocument(const VenuePlan& venue);
std::string buildingDocument(const VenuePlan& venue, std::size_t building);
std::string destinationsDocument(const VenuePlan& venue);
std::string mapTemplateDocument();

}  // namespace tern::imports
