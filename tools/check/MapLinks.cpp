#include "tools/check/MapLinks.hpp"

#include <algorithm>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"

namespace tern::check {

MapLinks::MapLinks(const Subject& subject)
    : isAlone_(subject.venue.maps == nullptr || subject.venue.maps->getCount() < 2) {
  const std::vector<Node>& nodes = subject.network.nodes();
  for (std::uint32_t node = 0; node < nodes.size(); ++node) {
    for (const Link& link : subject.network.linksOf(node)) {
      if (!subject.network.changesMap(node, link)) continue;
      joined_.push_back(nodes[node].map);
      joined_.push_back(nodes[link.to].map);
    }
  }
  std::ranges::sort(joined_);
  joined_.erase(std::unique(joined_.begin(), joined_.end()), joined_.end());
}

bool MapLinks::leadOn(std::int64_t map) const {
  return isAlone_ || std::ranges::binary_search(joined_, map);
}

}  // namespace tern::check
