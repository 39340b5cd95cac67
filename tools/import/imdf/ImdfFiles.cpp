#include "tools/import/imdf/ImdfFiles.hpp"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "tools/import/draft/Hash.hpp"

namespace tern::imports {

namespace {

constexpr std::array<std::string_view, 16> knownTypes{
    "address", "amenity", "anchor",  "building", "detail",       "fixture", "footprint", "geofence",
    "kiosk",   "level",   "opening", "occupant", "relationship", "section", "unit",      "venue"};

bool isKnown(std::string_view type) {
  return std::ranges::find(knownTypes, type) != knownTypes.end();
}

std::string_view stemOf(std::string_view file) {
  const std::string_view name = file.substr(file.rfind('/') + 1);
  return name.substr(0, name.rfind('.'));
}

bool isGeoJsonFile(std::string_view file) {
  return file.ends_with(".geojson") || file.ends_with(".json");
}

}  // namespace

Names ImdfFeature::label(std::string_view key) const {
  const Value& label = (*properties)[key];
  if (!label.text().empty()) return {{"", std::string(label.text())}};
  Names names;
  for (const auto& [language, text] : label.entries()) {
    if (!text.text().empty())
      names.push_back({std::string(language.text()), std::string(text.text())});
  }
  return names;
}

bool ImdfFiles::areIn(const SourceFiles& source) {
  return std::ranges::any_of(source.names(), [&](const std::string& file) {
    const std::string_view stem = stemOf(file);
    if (!isGeoJsonFile(file) || (stem != "unit" && stem != "level")) return false;
    return source.read(file).text.find("\"feature_type\"") != std::string::npos;
  });
}

ImdfFiles::ImdfFiles(const SourceFiles& source, Oddities& told) : stamp_(emptyHash) {
  for (const std::string& file : source.names()) {
    if (!isGeoJsonFile(file)) continue;
    ReadFile read = source.read(file);
    if (read.error) {
      told.tell(file, "unreadable", *read.error + ".");
    } else {
      add(file, std::move(read.text), told);
    }
  }
}

void ImdfFiles::add(const std::string& file, std::string text, Oddities& told) {
  stamp_ = hashOf(text, hashOf(file, stamp_));
  JsonResult document = decodeJson(std::move(text));
  if (document.error) {
    told.tell(file, "unreadable", "The file is no JSON: " + *document.error);
    return;
  }
  documents_.push_back(std::move(document.value));
  if (stemOf(file) == "manifest") {
    language_ = documents_.back()["language"].text();
  } else {
    addFeatures(file, documents_.back(), told);
  }
}

void ImdfFiles::addFeatures(const std::string& file, const Value& document, Oddities& told) {
  if (!document["features"].isList()) {
    told.tell(file, "unreadable", "The file has no list of features.");
    return;
  }
  std::unordered_set<std::string> ids;
  const auto features = document["features"].items();
  for (std::size_t i = 0; i < features.size(); ++i) {
    const Value& feature = features[i];
    std::string type(feature["feature_type"].text());
    if (type.empty()) type = stemOf(file);
    if (!isKnown(type)) {
      told.tell(file, "unknownType", "The format knows no features of the type " + type + ".");
      continue;
    }
    std::string id(feature["id"].text());
    if (id.empty()) id = file + "#" + std::to_string(i + 1);
    if (!ids.insert(id).second) {
      told.tell(id + " (again)", "repeated", "Another has the same id; the first one counts.");
      continue;
    }
    features_[type].push_back({std::move(id), &feature["properties"], &feature["geometry"]});
  }
}

}  // namespace tern::imports
