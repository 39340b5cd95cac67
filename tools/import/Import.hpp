// Open building data to a venue folder.
//
//   const Imported imported = importSource("ShinyokohamaStation", "out", {});
//   if (imported.failure) ...
//
// Threads: free functions. Fails: by value, with one line; nothing is written or replaced then.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "tools/import/gtfs/GtfsReader.hpp"
#include "tools/import/write/WriteVenues.hpp"

namespace tern::imports {

struct ImportWishes {
  // "network", "gtfs", "imdf" or "osm"; empty: as the source's files tell.
  std::string format;
  // Of a transit feed.
  StationWish stations;
  VenueWishes venue;
};

struct ImportFailure {
  // Which word of the call another one would help for: "--out"; empty: the source is at fault.
  std::string_view option;
  std::string sentence;
};

struct [[nodiscard]] Imported {
  WrittenVenues written;
  std::optional<ImportFailure> failure;
};

Imported importSource(const std::filesystem::path& source, const std::filesystem::path& out,
                      const ImportWishes& wishes);

}  // namespace tern::imports
