#include "tools/import/osm/OsmFile.hpp"

#include <exception>
#include <osmium/io/pbf_input.hpp>
#include <osmium/io/reader.hpp>
#include <osmium/io/xml_input.hpp>
#include <osmium/osm/node.hpp>
#include <osmium/osm/relation.hpp>
#include <osmium/osm/way.hpp>
#include <osmium/thread/pool.hpp>
#include <utility>

#include "tools/import/osm/OsmBudget.hpp"
#include "tools/import/osm/PbfCost.hpp"

namespace tern::imports {

namespace {

constexpr char tooMuch[] = "its records take more than 512 MiB; cut the building out first";

class Gatherer {
 public:
  explicit Gatherer(OsmBudget& budget) : budget_(budget) {}

  // False when the budget is spent.
  bool add(const osmium::memory::Buffer& buffer) {
    for (const auto& object : buffer.select<osmium::OSMObject>()) {
      // What was deleted is listed in some files all the same.
      if (object.visible()) add(object);
      if (budget_.isSpent()) return false;
    }
    return true;
  }

  OsmData take() { return std::move(data_); }

 private:
  void add(const osmium::OSMObject& object) {
    budget_.takeRecords(1);
    if (object.type() == osmium::item_type::node) {
      addNode(static_cast<const osmium::Node&>(object));
    } else if (object.type() == osmium::item_type::way) {
      addWay(static_cast<const osmium::Way&>(object));
    } else if (object.type() == osmium::item_type::relation) {
      addRelation(static_cast<const osmium::Relation&>(object));
    }
  }

  // One without a place on the globe is as good as none.
  void addNode(const osmium::Node& node) {
    if (!node.location().valid()) return;
    data_.nodes.push_back(
        {node.id(), {node.location().lon(), node.location().lat()}, tagsOf(node)});
  }

  void addWay(const osmium::Way& way) {
    OsmWay added{way.id(), {}, tagsOf(way)};
    budget_.takeRefs(way.nodes().size());
    for (const osmium::NodeRef& node : way.nodes()) added.refs.push_back(node.ref());
    data_.ways.push_back(std::move(added));
  }

  void addRelation(const osmium::Relation& relation) {
    OsmRelation added{relation.id(), {}, tagsOf(relation)};
    for (const osmium::RelationMember& member : relation.members()) {
      const std::string_view role = member.role();
      budget_.takeRefs(1);
      budget_.takeTexts(1, role.size());
      added.members.push_back({kindOf(member.type()), member.ref(), std::string(role)});
    }
    data_.relations.push_back(std::move(added));
  }

  static OsmKind kindOf(osmium::item_type type) {
    if (type == osmium::item_type::node) return OsmKind::node;
    return type == osmium::item_type::way ? OsmKind::way : OsmKind::relation;
  }

  OsmTags tagsOf(const osmium::OSMObject& object) {
    std::vector<OsmTags::Tag> tags;
    for (const osmium::Tag& tag : object.tags()) {
      tags.emplace_back(tag.key(), tag.value());
      budget_.takeTexts(2, tags.back().first.size() + tags.back().second.size());
    }
    return OsmTags(std::move(tags));
  }

  OsmBudget& budget_;
  OsmData data_;
};

OsmData gather(std::string_view bytes, OsmEncoding encoding, OsmBudget& budget) {
  constexpr int helpers = 1;
  constexpr std::size_t mostWaiting = 4;
  osmium::thread::Pool pool(helpers, mostWaiting);
  const osmium::io::File file(bytes.data(), bytes.size(),
                              encoding == OsmEncoding::pbf ? "pbf" : "xml");
  osmium::io::Reader reader(file, pool, osmium::osm_entity_bits::nwr, osmium::io::read_meta::no);
  Gatherer gatherer(budget);
  while (const osmium::memory::Buffer buffer = reader.read()) {
    if (!gatherer.add(buffer)) break;
  }
  reader.close();
  return gatherer.take();
}

}  // namespace

ReadOsmFile readOsmFile(std::string_view bytes, OsmEncoding encoding, std::size_t mostBytes) {
  if (encoding == OsmEncoding::pbf) {
    OsmBudget counted(mostBytes);
    if (const auto error = spendOnPbf(bytes, counted)) return {{}, error};
    if (counted.isSpent()) return {{}, tooMuch};
  }
  OsmBudget budget(mostBytes);
  try {
    OsmData data = gather(bytes, encoding, budget);
    if (budget.isSpent()) return {{}, tooMuch};
    return {std::move(data), std::nullopt};
  } catch (const std::exception& error) {
    return {{}, std::string(error.what())};
  }
}

}  // namespace tern::imports
