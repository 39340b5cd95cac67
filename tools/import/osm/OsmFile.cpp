#include "tools/import/osm/OsmFile.hpp"

#include <exception>
#include <osmium/io/pbf_input.hpp>
#include <osmium/io/reader.hpp>
#include <osmium/osm/node.hpp>
#include <osmium/osm/relation.hpp>
#include <osmium/osm/way.hpp>
#include <osmium/thread/pool.hpp>
#include <utility>

#include "tools/import/osm/OsmBudget.hpp"
#include "tools/import/osm/OsmGatherer.hpp"
#include "tools/import/osm/OsmXml.hpp"
#include "tools/import/osm/PbfCost.hpp"

namespace tern::imports {

namespace {

constexpr char tooMuch[] = "its records take more than 512 MiB; cut the building out first";

OsmKind kindOf(osmium::item_type type) {
  if (type == osmium::item_type::node) return OsmKind::node;
  return type == osmium::item_type::way ? OsmKind::way : OsmKind::relation;
}

OsmTags tagsOf(const osmium::OSMObject& object) {
  std::vector<OsmTags::Tag> tags;
  for (const osmium::Tag& tag : object.tags()) tags.emplace_back(tag.key(), tag.value());
  return OsmTags(std::move(tags));
}

std::optional<LonLat> placeOf(const osmium::Location& location) {
  if (!location.valid()) return std::nullopt;
  return LonLat{location.lon(), location.lat()};
}

void addWay(const osmium::Way& way, OsmGatherer& gatherer) {
  std::vector<std::int64_t> refs;
  for (const osmium::NodeRef& node : way.nodes()) {
    refs.push_back(node.ref());
    if (const auto at = placeOf(node.location())) gatherer.placeNode(node.ref(), *at);
  }
  gatherer.addWay(way.id(), std::move(refs), tagsOf(way));
}

void addRelation(const osmium::Relation& relation, OsmGatherer& gatherer) {
  std::vector<OsmMember> members;
  for (const osmium::RelationMember& member : relation.members()) {
    members.push_back({kindOf(member.type()), member.ref(), member.role()});
  }
  gatherer.addRelation(relation.id(), std::move(members), tagsOf(relation));
}

void addObject(const osmium::OSMObject& object, OsmGatherer& gatherer) {
  if (object.type() == osmium::item_type::node) {
    const auto& node = static_cast<const osmium::Node&>(object);
    gatherer.addNode(node.id(), placeOf(node.location()), tagsOf(node));
  } else if (object.type() == osmium::item_type::way) {
    addWay(static_cast<const osmium::Way&>(object), gatherer);
  } else if (object.type() == osmium::item_type::relation) {
    addRelation(static_cast<const osmium::Relation&>(object), gatherer);
  }
}

void readPbf(std::string_view bytes, OsmGatherer& gatherer) {
  constexpr int helpers = 1;
  constexpr std::size_t mostWaiting = 4;
  osmium::thread::Pool pool(helpers, mostWaiting);
  const osmium::io::File file(bytes.data(), bytes.size(), "pbf");
  osmium::io::Reader reader(file, pool, osmium::osm_entity_bits::nwr, osmium::io::read_meta::no);
  while (const osmium::memory::Buffer buffer = reader.read()) {
    for (const auto& object : buffer.select<osmium::OSMObject>()) {
      // What was deleted is listed in some files all the same.
      if (object.visible()) addObject(object, gatherer);
    }
    if (gatherer.isSpent()) break;
  }
  reader.close();
}

// Why it cannot be read.
std::optional<std::string> readInto(OsmGatherer& gatherer, std::string_view bytes,
                                    OsmEncoding encoding) {
  if (encoding == OsmEncoding::xml) return readOsmXml(bytes, gatherer);
  try {
    readPbf(bytes, gatherer);
    return std::nullopt;
  } catch (const std::exception& error) {
    return std::string(error.what());
  }
}

}  // namespace

ReadOsmFile readOsmFile(std::string_view bytes, OsmEncoding encoding, std::size_t mostBytes) {
  if (encoding == OsmEncoding::pbf) {
    OsmBudget counted(mostBytes);
    if (const auto error = spendOnPbf(bytes, counted)) return {{}, error};
    if (counted.isSpent()) return {{}, tooMuch};
  }
  OsmBudget budget(mostBytes);
  OsmGatherer gatherer(budget);
  if (auto error = readInto(gatherer, bytes, encoding)) return {{}, std::move(error)};
  if (budget.isSpent()) return {{}, tooMuch};
  return {gatherer.take(), std::nullopt};
}

}  // namespace tern::imports
