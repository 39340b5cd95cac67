// The colours in which a map may be shown, as the document that a venue names.
//
// Threads: free functions over plain values. Fails: never.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tern::documents {

// All of them have the colours of a route and the font in common.
struct MapTemplate {
  std::string_view id;
  std::string_view name;
  std::string_view background;
  std::string_view label;
  std::optional<std::int64_t> generatedAt = std::nullopt;
};

// Below the folder of the venues.
std::string pathOf(const MapTemplate& look);

std::string documentOf(const MapTemplate& look);

}  // namespace tern::documents
