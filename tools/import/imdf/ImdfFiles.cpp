#include "tools/import/imdf/ImdfFiles.hpp"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

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

}  // namespace

std::string ImdfFeature::category() const {
  std::string category(text("category"));
  for (char& letter : category) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return category;
}

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
    if (!isGeoJson(file) || (stem != "unit" && stem != "level")) return false;
    return source.read(file).text.find("\"feature_type\"") != std::string::npos;
  });
}

ImdfFiles::ImdfFiles(const SourceFiles& source, Oddities& told) : read_(readGeoJsonFiles(source)) {
  for (const GeoJsonFile& file : read_.files) {
    if (stemOf(file.name) == "manifest" && !file.error) {
      language_ = file.document["language"].text();
    } else {
      addFeatures(file, told);
    }
  }
}

void ImdfFiles::addFeatures(const GeoJsonFile& file, Oddities& told) {
  const Value* const features = featuresOf(file, told);
  if (features == nullptr) return;
  std::unordered_set<std::string> ids;
  for (std::size_t i = 0; i < features->size(); ++i) {
    const Value& feature = features->items()[i];
    std::string type(feature["feature_type"].text());
    if (type.empty()) type = stemOf(file.name);
    if (!isKnown(type)) {
      told.tell(file.name, "unknownType", "The format knows no features of the type " + type + ".");
      continue;
    }
    std::string id = idOf(feature["id"]);
    if (id.empty()) id = file.name + "#" + std::to_string(i + 1);
    if (!ids.insert(id).second) {
      told.tell(id + " (again)", "repeated", "Another has the same id; the first one counts.");
      continue;
    }
    features_[type].push_back({std::move(id), &feature["properties"], &feature["geometry"]});
  }
}

}  // namespace tern::imports
