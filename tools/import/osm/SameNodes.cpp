#include "tools/import/osm/SameNodes.hpp"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tern::imports {

namespace {

// Of each node the first that it is one with.
std::vector<std::size_t> firstOfEach(const Draft& draft,
                                     const std::map<std::size_t, std::size_t>& same) {
  std::vector<std::size_t> first(draft.nodes.size());
  std::unordered_map<std::string, std::size_t> byId;
  for (std::size_t i = 0; i < first.size(); ++i) {
    const auto other = same.find(i);
    first[i] = other != same.end() ? first[other->second]
                                   : byId.try_emplace(draft.nodes[i].id, i).first->second;
  }
  return first;
}

}  // namespace

void mergeSameNodes(Draft& draft, const std::map<std::size_t, std::size_t>& same) {
  const std::vector<std::size_t> first = firstOfEach(draft, same);
  std::vector<std::size_t> kept(first.size());
  std::vector<DraftNode> nodes;
  for (std::size_t i = 0; i < first.size(); ++i) {
    kept[i] = first[i] == i ? nodes.size() : kept[first[i]];
    if (first[i] == i) {
      nodes.push_back(draft.nodes[i]);
    } else if (draft.nodes[i].isEntrance) {
      nodes[kept[i]].isEntrance = true;
    }
  }
  draft.nodes = std::move(nodes);
  for (DraftLink& link : draft.links) {
    link.from = kept[link.from];
    link.to = kept[link.to];
  }
  std::erase_if(draft.links, [](const DraftLink& link) { return link.from == link.to; });
  for (DraftPlace& place : draft.places) {
    for (std::size_t& node : place.nodes) node = kept[node];
  }
}

}  // namespace tern::imports
