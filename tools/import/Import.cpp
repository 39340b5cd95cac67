#include "tools/import/Import.hpp"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "tools/import/NoBuilding.hpp"
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

// A file that is the source is named once.
std::string sentenceOf(const std::filesystem::path& source, const std::string& error) {
  const std::string file = source.filename().string();
  const bool isOfFile = !file.empty() && error.starts_with(file);
  return source.string() + (isOfFile ? error.substr(file.size()) : ": " + error);
}

bool liesIn(const std::filesystem::path& path, const std::filesystem::path& folder) {
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) return false;
  const auto inner = std::filesystem::weakly_canonical(path, error);
  const auto outer = std::filesystem::weakly_canonical(folder / "", error);
  const auto way = inner.lexically_relative(outer);
  return !error && !way.empty() && *way.begin() != "..";
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
  if (liesIn(out, source)) {
    return failed("--out", out.string() +
                               " lies in the source, whose part it would be; name a "
                               "folder beside it");
  }
  const std::string format = formatOf(opened.files, wishes);
  if (format.empty()) {
    return failed("", whyNoBuilding(source, opened.files));
  }
  if (format == "gtfs") {
    const ReadStations read = readGtfs(opened.files, wishes.stations);
    if (read.error && read.isOfWish) return failed("--station", *read.error);
    if (read.error) return failed("", sentenceOf(source, *read.error));
    VenueWishes venues = wishes.venue;
    if (wishes.stations.all) venues.customer = read.publisher;
    return written(read.drafts, venues, out);
  }
  if (wishes.stations.all || !wishes.stations.station.empty()) {
    return failed(wishes.stations.all ? "--all" : "--station", "only a transit feed has stations");
  }
  ReadDraft read = readAs(format, opened.files);
  if (read.error) return failed("", sentenceOf(source, *read.error));
  return written({std::move(read.draft)}, wishes.venue, out);
}

}  // namespace tern::imports
