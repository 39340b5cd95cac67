// Puts the records of an OpenStreetMap file together, within a budget, whatever the file is written
// in.
//
// Ownership: borrows the budget. Threads: one caller at a time. Fails: never; what is added once
// the budget is spent may be incomplete.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/import/osm/OsmBudget.hpp"
#include "tools/import/osm/OsmData.hpp"

namespace tern::imports {

class OsmGatherer {
 public:
  explicit OsmGatherer(OsmBudget& budget) : budget_(budget) {}

  bool isSpent() const { return budget_.isSpent(); }

  // One without a place on the globe is as good as none.
  void addNode(std::int64_t id, std::optional<LonLat> at, OsmTags tags) {
    budget_.takeRecords(1);
    takeTags(tags);
    if (at) data_.nodes.push_back({id, *at, std::move(tags)});
  }

  void addWay(std::int64_t id, std::vector<std::int64_t> refs, OsmTags tags) {
    budget_.takeRecords(1);
    budget_.takeRefs(refs.size());
    takeTags(tags);
    data_.ways.push_back({id, std::move(refs), std::move(tags)});
  }

  void addRelation(std::int64_t id, std::vector<OsmMember> members, OsmTags tags) {
    budget_.takeRecords(1);
    budget_.takeRefs(members.size());
    for (const OsmMember& member : members) budget_.takeTexts(1, member.role.size());
    takeTags(tags);
    data_.relations.push_back({id, std::move(members), std::move(tags)});
  }

  // Where a node lies, as one of its ways says.
  void placeNode(std::int64_t id, LonLat at) {
    budget_.takeRecords(1);
    data_.placed.nodes.push_back({id, at, {}});
  }

  // Where a way leads, as a relation says that it is a member of.
  void placeWay(std::int64_t id, std::vector<LonLat> line) {
    budget_.takeRecords(1 + line.size());
    data_.placed.ways.push_back({id, std::move(line)});
  }

  OsmData take() { return std::move(data_); }

 private:
  void takeTags(const OsmTags& tags) {
    for (const auto& [key, value] : tags.all()) budget_.takeTexts(2, key.size() + value.size());
  }

  OsmBudget& budget_;
  OsmData data_;
};

}  // namespace tern::imports
