#include "tools/import/source/GeoJsonFiles.hpp"

#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Numbers.hpp"

namespace tern::imports {

namespace {

GeoJsonFile parsed(const std::string& name, std::string text) {
  JsonResult document = decodeJson(std::move(text));
  if (document.error) return {name, {}, "The file is no JSON: " + *document.error};
  return {name, std::move(document.value), std::nullopt};
}

}  // namespace

bool isGeoJson(std::string_view file) {
  return file.ends_with(".geojson") || file.ends_with(".GeoJSON") || file.ends_with(".json");
}

GeoJsonFiles readGeoJsonFiles(const SourceFiles& source) {
  GeoJsonFiles files;
  for (const std::string& name : source.names()) {
    if (!isGeoJson(name)) continue;
    ReadFile read = source.read(name);
    if (read.error) {
      files.files.push_back({name, {}, *read.error + "."});
    } else {
      files.stamp = hashOf(read.text, hashOf(name, files.stamp));
      files.files.push_back(parsed(name, std::move(read.text)));
    }
  }
  return files;
}

std::string idOf(const Value& value) {
  if (value.isText()) return std::string(value.text());
  const auto number = value.isNumber() ? wholeNumber(value.number()) : std::nullopt;
  return number ? std::to_string(*number) : std::string();
}

const Value* featuresOf(const GeoJsonFile& file, Oddities& told) {
  const Value& features = file.document["features"];
  if (features.isList()) return &features;
  told.tell(file.name, "unreadable", file.error.value_or("The file has no list of features."));
  return nullptr;
}

}  // namespace tern::imports
