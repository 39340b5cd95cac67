// The nodes of a file, and those of the draft that are made of them: one for each floor that a node
// is walked on.
//
// Ownership: borrows the data and the draft. Threads: one caller at a time. Fails: by value.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/osm/OsmData.hpp"

namespace tern::imports {

class OsmNodes {
 public:
  OsmNodes(const OsmData& data, Draft& draft) : draft_(draft) {
    for (const OsmNode& node : data.nodes) nodes_.emplace(node.id, &node);
  }

  // Null for one that is not in the file.
  const OsmNode* find(std::int64_t id) const {
    const auto node = nodes_.find(id);
    return node == nodes_.end() ? nullptr : node->second;
  }

  std::optional<Point> placeOf(std::int64_t id) const {
    const OsmNode* const node = find(id);
    return node == nullptr ? std::nullopt : std::optional(draft_.plane.at(node->at));
  }

  // Of a node as it is walked on the floor. On the first floor that it is asked for it has its
  // plain name, unless it is said to lie on several.
  const std::string& idOn(std::int64_t node, std::size_t floor, bool isOnSeveral = false) {
    const auto [known, isNew] = ids_.try_emplace({node, floor});
    if (isNew) {
      const bool isPlain = !isOnSeveral && named_.emplace(node, floor).second;
      known->second = osmId(OsmKind::node, node) + (isPlain ? "" : "@" + levelOf(floor));
    }
    return known->second;
  }

  std::string levelOf(std::size_t floor) const {
    return Value(draft_.floors[floor].ordinal).printed();
  }

  // The draft's node; made when it is asked for first. REQUIRES: the file has the node.
  std::size_t walkedOn(std::int64_t node, std::size_t floor, bool isOnSeveral = false) {
    const auto [known, isNew] = walked_.try_emplace({node, floor}, draft_.nodes.size());
    if (isNew) {
      const OsmNode& found = *find(node);
      draft_.nodes.push_back(
          {idOn(node, floor, isOnSeveral), floor, draft_.plane.at(found.at), std::nullopt, false});
    }
    return known->second;
  }

  bool isWalkedOn(std::int64_t node, std::size_t floor) const {
    return walked_.contains({node, floor});
  }

 private:
  using OnFloor = std::pair<std::int64_t, std::size_t>;

  Draft& draft_;
  std::unordered_map<std::int64_t, const OsmNode*> nodes_;
  std::map<OnFloor, std::string> ids_;
  std::map<OnFloor, std::size_t> walked_;
  // On which floor a node has its plain name.
  std::map<std::int64_t, std::size_t> named_;
};

}  // namespace tern::imports
