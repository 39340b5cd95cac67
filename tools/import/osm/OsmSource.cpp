#include "tools/import/osm/OsmSource.hpp"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "tools/import/draft/Hash.hpp"
#include "tools/import/osm/OsmFile.hpp"
#include "tools/import/osm/PlacedRecords.hpp"

namespace tern::imports {

namespace {

bool isPbfName(std::string_view file) { return file.ends_with(".pbf"); }

bool isOsmName(std::string_view file) {
  return file.ends_with(".osm") || file.ends_with(".osm.xml") || isPbfName(file);
}

bool beginsAsXml(std::string_view bytes) {
  constexpr std::size_t mostBefore = 1'000;
  const std::string_view head = bytes.substr(0, mostBefore);
  return head.find("<osm ") != head.npos || head.find("<osm>") != head.npos;
}

// The size of the first header, its first field and that field's size come before its name.
bool beginsAsPbf(std::string_view bytes) {
  constexpr std::size_t before = 6;
  return bytes.size() > before && bytes.substr(before).starts_with("OSMHeader");
}

template <class Record>
void append(std::vector<Record>& list, std::vector<Record> added) {
  list.insert(list.end(), std::make_move_iterator(added.begin()),
              std::make_move_iterator(added.end()));
}

template <class Record>
void keepFirst(std::vector<Record>& list) {
  std::unordered_set<std::int64_t> ids;
  std::erase_if(list, [&](const Record& record) { return !ids.insert(record.id).second; });
}

// Ways whose tags say something are told of.
void dropMissingNodes(OsmData& data, Oddities& oddities) {
  std::unordered_set<std::int64_t> ids;
  for (const OsmNode& node : data.nodes) ids.insert(node.id);
  for (OsmWay& way : data.ways) {
    const auto missing =
        std::erase_if(way.refs, [&](std::int64_t node) { return !ids.contains(node); });
    const bool isIndoors = way.tags.has("indoor") || way.tags.has("level");
    if (missing == 0 || !isIndoors) continue;
    oddities.tell(osmId(OsmKind::way, way.id), "dangling",
                  std::to_string(missing) + " of its nodes are not there.");
  }
}

}  // namespace

bool isOsmIn(const SourceFiles& files) {
  if (std::ranges::any_of(files.names(), isOsmName)) return true;
  if (files.names().size() != 1) return false;
  const std::string bytes = files.read(files.names().front()).text;
  return beginsAsXml(bytes) || beginsAsPbf(bytes);
}

ReadOsmSource readOsmSource(const SourceFiles& files, Oddities& oddities) {
  ReadOsmSource read;
  read.stamp = emptyHash;
  for (const std::string& file : files.names()) {
    if (!isOsmName(file) && files.names().size() > 1) continue;
    const ReadFile bytes = files.read(file);
    if (bytes.error) return {{}, 0, *bytes.error};
    if (bytes.text.empty()) return {{}, 0, file + " is empty"};
    read.stamp = hashOf(bytes.text, hashOf(file, read.stamp));
    const bool isPbf = isPbfName(file) || beginsAsPbf(bytes.text);
    ReadOsmFile part = readOsmFile(bytes.text, isPbf ? OsmEncoding::pbf : OsmEncoding::xml);
    if (part.error) return {{}, 0, file + ": " + *part.error};
    append(read.data.nodes, std::move(part.data.nodes));
    append(read.data.ways, std::move(part.data.ways));
    append(read.data.relations, std::move(part.data.relations));
    append(read.data.placed.nodes, std::move(part.data.placed.nodes));
    append(read.data.placed.ways, std::move(part.data.placed.ways));
  }
  if (read.stamp == emptyHash) read.error = "no file of it is called .osm or .osm.pbf";
  keepFirst(read.data.nodes);
  keepFirst(read.data.ways);
  keepFirst(read.data.relations);
  addPlacedRecords(read.data);
  dropMissingNodes(read.data, oddities);
  return read;
}

}  // namespace tern::imports
