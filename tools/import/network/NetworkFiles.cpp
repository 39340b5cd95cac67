#include "tools/import/network/NetworkFiles.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "tools/import/source/GeoJson.hpp"

namespace tern::imports {

namespace {

std::string lowered(std::string_view text) {
  std::string out(text);
  std::ranges::transform(out, out.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return out;
}

// By the last word of the file's name, before its ending.
RecordKind kindOfFile(std::string_view file) {
  const std::string_view stem = file.substr(0, file.rfind('.'));
  const std::size_t word = stem.find_last_of("_/");
  const std::string last = lowered(word == std::string_view::npos ? stem : stem.substr(word + 1));
  constexpr std::pair<std::string_view, RecordKind> known[] = {
      {"floor", RecordKind::floor},     {"space", RecordKind::space},
      {"opening", RecordKind::opening}, {"facility", RecordKind::facility},
      {"drawing", RecordKind::drawing}, {"fixture", RecordKind::fixture},
      {"site", RecordKind::site},       {"building", RecordKind::building},
  };
  for (const auto& [name, kind] : known) {
    if (last == name) return kind;
  }
  return RecordKind::other;
}

RecordKind kindOf(const Value& properties, RecordKind ofFile) {
  if (!idOf(propertyOf(properties, "link_id")).empty()) return RecordKind::link;
  if (!idOf(propertyOf(properties, "node_id")).empty()) return RecordKind::node;
  return ofFile;
}

std::string recordIdOf(const Value& properties, const std::string& file, std::size_t index) {
  for (const std::string_view key : {"node_id", "link_id", "id"}) {
    std::string id = idOf(propertyOf(properties, key));
    if (!id.empty()) return id;
  }
  return file + "#" + std::to_string(index + 1);
}

}  // namespace

const Value& propertyOf(const Value& properties, std::string_view key) {
  const Value& value = properties[key];
  if (!value.isAbsent()) return value;
  std::string capitals(key);
  for (char& c : capitals) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return properties[capitals];
}

int NetworkRecord::code(std::string_view key) const {
  const Value& stated = value(key);
  if (stated.isNumber()) return static_cast<int>(std::clamp(stated.number(), -1.0, 1e6));
  const std::string_view text = stated.text();
  int code = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
  return error == std::errc() && end == text.data() + text.size() ? code : -1;
}

bool NetworkFiles::areIn(const SourceFiles& source) {
  return std::ranges::any_of(source.names(), [&](const std::string& file) {
    if (!isGeoJson(file)) return false;
    const std::string text = source.read(file).text;
    constexpr std::array keys{R"("node_id")", R"("link_id")", R"("NODE_ID")", R"("LINK_ID")"};
    return std::ranges::any_of(
        keys, [&](const char* key) { return text.find(key) != std::string::npos; });
  });
}

NetworkFiles::NetworkFiles(const SourceFiles& source, Oddities& told)
    : read_(readGeoJsonFiles(source)) {
  for (const GeoJsonFile& file : read_.files) addFeatures(file, told);
}

void NetworkFiles::addFeatures(const GeoJsonFile& file, Oddities& told) {
  const Value* const features = featuresOf(file, told);
  if (features == nullptr) return;
  const std::optional<PlaneSystem> system = statedPlaneSystem(file.document);
  if (!system) {
    told.tell(file.name, "unreadable", "The file's coordinate system is not known.");
    return;
  }
  const RecordKind ofFile = kindOfFile(file.name);
  for (std::size_t i = 0; i < features->size(); ++i) {
    const Value& feature = features->items()[i];
    const Value& properties = feature["properties"];
    records_[kindOf(properties, ofFile)].push_back(
        {recordIdOf(properties, file.name, i), &properties, &feature["geometry"], *system});
  }
}

}  // namespace tern::imports
