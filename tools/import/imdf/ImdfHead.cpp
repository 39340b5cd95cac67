#include "tools/import/imdf/ImdfHead.hpp"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

#include "tools/import/draft/MiddleValue.hpp"
#include "tools/import/source/GeoJson.hpp"

namespace tern::imports {

namespace {

// That of most names of units and levels, else the manifest's.
std::string languageOfMost(ImdfFiles& files) {
  std::map<std::string, int> counts;
  for (const char* const type : {"unit", "level", "occupant", "amenity", "venue"}) {
    for (const ImdfFeature& feature : files.of(type)) {
      for (const Name& name : feature.label("name")) ++counts[name.language];
    }
  }
  counts.erase("");
  if (counts.empty()) return files.language().empty() ? "en" : files.language();
  return std::ranges::max_element(counts, {}, [](const auto& count) { return count.second; })
      ->first;
}

std::string addressOf(const ImdfFeature& feature, ImdfFiles& files, Oddities& told) {
  const std::string id = feature.idOf("address_id");
  if (id.empty()) return {};
  for (const ImdfFeature& address : files.of("address")) {
    if (address.id != id) continue;
    std::string line;
    for (const std::string_view key : {"address", "unit", "locality", "postal_code"}) {
      const std::string_view part = address.text(key);
      if (!part.empty()) line += (line.empty() ? "" : ", ") + std::string(part);
    }
    return line;
  }
  told.tell(feature.id, "dangling", "Its address is not there.");
  return {};
}

}  // namespace

bool placeImdf(ImdfFiles& files, Draft& draft) {
  std::vector<double> longitudes;
  std::vector<double> latitudes;
  for (const char* const type : {"unit", "level"}) {
    for (const ImdfFeature& feature : files.of(type)) {
      const auto polygons = globePolygons(*feature.geometry, PlaneSystem());
      if (!polygons) continue;
      for (const LonLat at : polygons->front().front()) {
        longitudes.push_back(at.longitude);
        latitudes.push_back(at.latitude);
      }
    }
    if (!longitudes.empty()) break;
  }
  if (longitudes.empty()) return false;
  draft.plane = LocalPlane({middleValue(longitudes), middleValue(latitudes)});
  return true;
}

void nameImdf(ImdfFiles& files, const std::string& source, Draft& draft) {
  draft.id = source;
  draft.stamp = files.stamp();
  draft.language = languageOfMost(files);
  for (const ImdfFeature& venue : files.of("venue")) {
    if (draft.names.empty()) draft.names = venue.label("name");
    if (draft.id == source) draft.id = venue.id;
  }
  if (draft.names.empty()) draft.names = {{"", source}};
  for (const ImdfFeature& building : files.of("building")) {
    draft.buildings.push_back(
        {building.id, building.label("name"), addressOf(building, files, draft.oddities)});
  }
}

}  // namespace tern::imports
