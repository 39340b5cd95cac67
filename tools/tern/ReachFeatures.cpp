#include "tools/tern/ReachFeatures.hpp"

#include <array>
#include <set>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/Whereabouts.hpp"
#include "tools/tern/words/WalkLength.hpp"

namespace tern::command {

namespace {

using Link = std::pair<std::int64_t, std::int64_t>;

class ReachedLinks {
 public:
  ReachedLinks(const TernActiveVenue& venue, std::int64_t level, const Value& reached)
      : venue_(venue), grid_(venue.globalASGrid()), level_(level) {
    for (const Value& each : reached.items()) reached_.insert(each["waypoint"].integer());
  }

  void addTo(GeoFeatures& features) {
    for (const std::int64_t id : reached_) {
      const auto node = grid_->getNodeById(id);
      if (!node) continue;
      for (const TernNeighbor& link : node->neighbors()) addLink(features, *node, link);
    }
  }

 private:
  // Each once, whichever end it is met at; links to other floors are no lines on a map.
  void addLink(GeoFeatures& features, const TernASNode& node, const TernNeighbor& link) {
    const auto other = grid_->getNodeById(link.neighborId.integer());
    if (link.acc.integer() > level_ || !other || !reached_.contains(other->nodeId())) return;
    if (other->mapId() != node.mapId()) return;
    if (!known_.insert(std::minmax(node.nodeId(), other->nodeId())).second) return;
    const std::array ends{TernCoordinate{node.x(), node.y()},
                          TernCoordinate{other->x(), other->y()}};
    const TernMap* map = venue_.maps->findById(node.mapId());
    const double length = double{TernUtils::distanceBetweenPoint1(ends[0], ends[1])};
    features.add({"walk", venue_, node.mapId(), {}, words::lengthOn(map, length).metres}, ends);
  }

  const TernActiveVenue& venue_;
  std::shared_ptr<TernASGrid> grid_;
  std::int64_t level_;
  std::set<std::int64_t> reached_;
  std::set<Link> known_;
};

}  // namespace

GeoFeatures featuresOfReach(const TernActiveVenue& venue, const Value& request,
                            const Value& answer) {
  GeoFeatures features;
  for (const Value& id : request["from"].items()) {
    const auto node = venue.globalASGrid()->getNodeById(id.integer());
    if (!node) continue;
    const TernCoordinate at{node->x(), node->y()};
    features.add({"start", venue, node->mapId(), placeName(venue, node->nodeId()), 0.0}, {&at, 1});
  }
  ReachedLinks(venue, levelOf(request), answer["reached"]).addTo(features);
  return features;
}

}  // namespace tern::command
