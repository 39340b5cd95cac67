#include "tools/import/Import.hpp"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/import/gtfs/GtfsFeed.hpp"
#include "tools/import/imdf/ImdfFiles.hpp"
#include "tools/import/imdf/ImdfReader.hpp"
#include "tools/import/network/NetworkFiles.hpp"
#include "tools/import/network/NetworkReader.hpp"
#include "tools/import/osm/OsmReader.hpp"
#include "tools/import/osm/OsmSource.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

namespace {

Imported failed(std::string_view option, std::string sentence) {
  return {{}, ImportFailure{option, std::move(sentence)}};
}

std::string formatOf(const SourceFiles& files, const ImportWishes& wishes) {
  if (!wishes.format.empty()) return wishes.format;
  if (GtfsFeed::isIn(files)) return "gtfs";
  if (ImdfFiles::areIn(files)) return "imdf";
  if (isOsmIn(files)) return "osm";
  return NetworkFiles::areIn(files) ? "network" : "";
}

ReadDraft readAs(std::string_view format, const SourceFiles& files) {
  if (format == "imdf") return readImdf(files);
  return format == "osm" ? readOsm(files) : readNetwork(files);
}

Imported written(const std::vector<Draft>& drafts, const VenueWishes& wishes,
                 const std::filesystem::path& out) {
  WrittenVenues written = writeVenues(drafts, wishes, out);
  if (written.error) return failed("--out", *written.error);
  return {std::move(written), std::nullopt};
}

}  // namespace

Imported importSource(const std::filesystem::path& source, const std::filesystem::path& out,
                      const ImportWishes& wishes) {
  constexpr std::string_view formats[] = {"", "network", "gtfs", "imdf", "osm"};
  if (std::ranges::find(formats, wishes.format) == std::end(formats)) {
    return failed("", "the format " + wishes.format + " is not known");
  }
  const OpenedSource opened = openSource(source);
  if (opened.error) return failed("", *opened.error);
  const std::string format = formatOf(opened.files, wishes);
  if (format.empty()) {
    return failed("", source.string() +
                          " holds no building data that is known: no nodes and links as GeoJSON, "
                          "no stops.txt and pathways.txt of a transit feed, no units and "
                          "levels of IMDF, and no OpenStreetMap");
  }
  if (format == "gtfs") {
    const ReadStations read = readGtfs(opened.files, wishes.stations);
    if (read.error && read.isOfWish) return failed("--station", *read.error);
    if (read.error) return failed("", source.string() + ": " + *read.error);
    VenueWishes venues = wishes.venue;
    if (wishes.stations.all) venues.customer = read.publisher;
    return written(read.drafts, venues, out);
  }
  if (wishes.stations.all || !wishes.stations.station.empty()) {
    return failed(wishes.stations.all ? "--all" : "--station", "only a transit feed has stations");
  }
  ReadDraft read = readAs(format, opened.files);
  if (read.error) return failed("", source.string() + ": " + *read.error);
  return written({std::move(read.draft)}, wishes.venue, out);
}

}  // namespace tern::imports
