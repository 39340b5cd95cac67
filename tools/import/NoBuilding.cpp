#include "tools/import/NoBuilding.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "tools/import/gtfs/GtfsFeed.hpp"
#include "tools/import/source/GeoJsonFiles.hpp"

namespace tern::imports {

namespace {

bool isPacked(std::string_view file) {
  constexpr std::array endings{".zip", ".ZIP", ".gz", ".bz2", ".xz", ".7z", ".tar", ".tgz", ".rar"};
  return std::ranges::any_of(endings, [&](const char* end) { return file.ends_with(end); });
}

// Of what might have been building data the first file that cannot be read.
std::optional<std::string> unreadableIn(const SourceFiles& files) {
  for (const std::string& name : files.names()) {
    if (!isGeoJson(name) && files.names().size() > 1) continue;
    if (auto read = files.read(name); read.error) return read.error;
  }
  return std::nullopt;
}

}  // namespace

std::string whyNoBuilding(const std::filesystem::path& source, const SourceFiles& files) {
  const std::string name = source.string();
  if (files.names().empty()) return name + " holds no files";
  if (const auto error = unreadableIn(files)) return name + ": " + *error;
  if (files.names().size() == 1 && files.read(files.names().front()).text.empty()) {
    return name + " is empty";
  }
  if (GtfsFeed::hasStops(files)) {
    return name +
           " is a transit feed without a pathways.txt, which says how stations are from inside";
  }
  const auto packed = std::ranges::find_if(files.names(), isPacked);
  if (packed != files.names().end()) {
    const bool isItself = *packed == source.filename();
    return name +
           (isItself ? " is packed; unpack it before"
                     : " holds no more than what is packed in " + *packed + "; unpack that before");
  }
  return name +
         " holds no building data that is known: no nodes and links as GeoJSON, no stops.txt and "
         "pathways.txt of a transit feed, no units and levels of IMDF, and no OpenStreetMap";
}

}  // namespace tern::imports
