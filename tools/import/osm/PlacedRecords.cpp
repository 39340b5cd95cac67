#include "tools/import/osm/PlacedRecords.hpp"

#include <limits>
#include <map>
#include <unordered_set>
#include <utility>

namespace tern::imports {

namespace {

class RecordPlacer {
 public:
  explicit RecordPlacer(OsmData& data) : data_(data) {
    for (const OsmNode& node : data.nodes) nodes_.insert(node.id);
    for (const OsmWay& way : data.ways) ways_.insert(way.id);
  }

  void place() {
    for (OsmNode& node : data_.placed.nodes) {
      if (nodes_.insert(node.id).second) data_.nodes.push_back(std::move(node));
    }
    for (const OsmNode& node : data_.nodes) nodeAt_.try_emplace(keyOf(node.at), node.id);
    for (const OsmPlaced::Way& way : data_.placed.ways) {
      if (ways_.insert(way.id).second) data_.ways.push_back({way.id, cornersOf(way), {}});
    }
    data_.placed = {};
  }

 private:
  using Key = std::pair<double, double>;

  static Key keyOf(LonLat at) { return {at.longitude, at.latitude}; }

  std::vector<std::int64_t> cornersOf(const OsmPlaced::Way& way) {
    std::vector<std::int64_t> corners;
    for (const LonLat at : way.line) {
      const auto [known, isNew] = nodeAt_.try_emplace(keyOf(at));
      if (isNew) {
        known->second = freeId();
        data_.nodes.push_back({known->second, at, {}});
      }
      corners.push_back(known->second);
    }
    return corners;
  }

  // Far from those that editors count down from 0.
  std::int64_t freeId() {
    while (!nodes_.insert(next_).second) ++next_;
    return next_;
  }

  OsmData& data_;
  std::unordered_set<std::int64_t> nodes_;
  std::unordered_set<std::int64_t> ways_;
  std::map<Key, std::int64_t> nodeAt_;
  std::int64_t next_ = std::numeric_limits<std::int64_t>::min();
};

}  // namespace

void addPlacedRecords(OsmData& data) { RecordPlacer(data).place(); }

}  // namespace tern::imports
