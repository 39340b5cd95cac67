#include "tools/import/source/GeoJsonFiles.hpp"

#include <utility>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::imports {

namespace {

void add(GeoJsonFiles& files, const std::string& name, std::string text, Oddities& told) {
  files.stamp = hashOf(text, hashOf(name, files.stamp));
  JsonResult document = decodeJson(std::move(text));
  if (document.error) {
    told.tell(name, "unreadable", "The file is no JSON: " + *document.error);
  } else {
    files.files.push_back({name, std::move(document.value)});
  }
}

}  // namespace

bool isGeoJson(std::string_view file) {
  return file.ends_with(".geojson") || file.ends_with(".GeoJSON") || file.ends_with(".json");
}

GeoJsonFiles readGeoJsonFiles(const SourceFiles& source, Oddities& told) {
  GeoJsonFiles files;
  for (const std::string& name : source.names()) {
    if (!isGeoJson(name)) continue;
    ReadFile read = source.read(name);
    if (read.error) {
      told.tell(name, "unreadable", *read.error + ".");
    } else {
      add(files, name, std::move(read.text), told);
    }
  }
  return files;
}

const Value* featuresOf(const GeoJsonFile& file, Oddities& told) {
  const Value& features = file.document["features"];
  if (features.isList()) return &features;
  told.tell(file.name, "unreadable", "The file has no list of features.");
  return nullptr;
}

}  // namespace tern::imports
