#include "tools/import/network/NetworkFiles.hpp"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"
#include "tools/import/draft/Hash.hpp"
#include "tools/import/source/GeoJson.hpp"

namespace tern::imports {

namespace {

bool isGeoJson(std::string_view file) {
  return file.ends_with(".geojson") || file.ends_with(".GeoJSON") || file.ends_with(".json");
}

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
  if (properties["link_id"].isText()) return RecordKind::link;
  if (properties["node_id"].isText()) return RecordKind::node;
  return ofFile;
}

std::string idOf(const Value& properties, const std::string& file, std::size_t index) {
  for (const std::string_view key : {"node_id", "link_id", "id"}) {
    const std::string_view id = properties[key].text();
    if (!id.empty()) return std::string(id);
  }
  return file + "#" + std::to_string(index + 1);
}

}  // namespace

int NetworkRecord::code(std::string_view key) const {
  const Value& value = (*properties)[key];
  if (value.isNumber()) return static_cast<int>(std::clamp(value.number(), -1.0, 1e6));
  const std::string_view text = value.text();
  int code = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
  return error == std::errc() && end == text.data() + text.size() ? code : -1;
}

bool NetworkFiles::areIn(const SourceFiles& source) {
  return std::ranges::any_of(source.names(), [&](const std::string& file) {
    if (!isGeoJson(file)) return false;
    const std::string text = source.read(file).text;
    return text.find("\"node_id\"") != std::string::npos ||
           text.find("\"link_id\"") != std::string::npos;
  });
}

NetworkFiles::NetworkFiles(const SourceFiles& source, Oddities& told) : stamp_(emptyHash) {
  for (const std::string& file : source.names()) {
    if (!isGeoJson(file)) continue;
    ReadFile read = source.read(file);
    if (read.error) {
      told.tell(file, "unreadable", *read.error + ".");
    } else {
      add(file, std::move(read.text), told);
    }
  }
}

void NetworkFiles::add(const std::string& file, std::string text, Oddities& told) {
  stamp_ = hashOf(text, hashOf(file, stamp_));
  JsonResult document = decodeJson(std::move(text));
  if (document.error) {
    told.tell(file, "unreadable", "The file is no JSON: " + *document.error);
    return;
  }
  documents_.push_back(std::move(document.value));
  addFeatures(file, documents_.back(), told);
}

void NetworkFiles::addFeatures(const std::string& file, const Value& document, Oddities& told) {
  const std::optional<PlaneSystem> system = statedPlaneSystem(document);
  if (!document["features"].isList()) {
    told.tell(file, "unreadable", "The file has no list of features.");
    return;
  }
  if (!system) {
    told.tell(file, "unreadable", "The file's coordinate system is not known.");
    return;
  }
  const RecordKind ofFile = kindOfFile(file);
  const auto features = document["features"].items();
  for (std::size_t i = 0; i < features.size(); ++i) {
    const Value& properties = features[i]["properties"];
    records_[kindOf(properties, ofFile)].push_back(
        {idOf(properties, file, i), &properties, &features[i]["geometry"], *system});
  }
}

}  // namespace tern::imports
