#include "tools/import/osm/OsmRings.hpp"

#include <optional>
#include <unordered_map>
#include <utility>

namespace tern::imports {

namespace {

using Way = std::vector<std::int64_t>;

class RingBuilder {
 public:
  explicit RingBuilder(std::span<const Way* const> ways) : ways_(ways), isUsed_(ways.size()) {
    // From the last to the first, so that the first lies at the back.
    for (std::size_t i = ways.size(); i-- > 0;) {
      if (ways[i]->size() < 2) continue;
      ending_[ways[i]->front()].push_back(i);
      ending_[ways[i]->back()].push_back(i);
    }
  }

  OsmRings build() {
    for (std::size_t i = 0; i < ways_.size(); ++i) {
      if (!isUsed_[i]) follow(i);
    }
    return std::move(made_);
  }

 private:
  void follow(std::size_t first) {
    constexpr std::size_t leastOfRing = 4;
    Way ring = *ways_[first];
    isUsed_[first] = true;
    std::size_t count = 1;
    while (!ring.empty() && ring.front() != ring.back()) {
      const auto next = unusedAt(ring.back());
      if (!next) break;
      isUsed_[*next] = true;
      ++count;
      append(ring, *ways_[*next]);
    }
    if (ring.size() < leastOfRing || ring.front() != ring.back()) {
      made_.loose += count;
      return;
    }
    ring.pop_back();
    made_.rings.push_back(std::move(ring));
  }

  std::optional<std::size_t> unusedAt(std::int64_t node) {
    std::vector<std::size_t>& ways = ending_[node];
    while (!ways.empty() && isUsed_[ways.back()]) ways.pop_back();
    return ways.empty() ? std::nullopt : std::optional(ways.back());
  }

  static void append(Way& ring, const Way& way) {
    if (way.front() == ring.back()) {
      ring.insert(ring.end(), way.begin() + 1, way.end());
    } else {
      ring.insert(ring.end(), way.rbegin() + 1, way.rend());
    }
  }

  std::span<const Way* const> ways_;
  std::vector<bool> isUsed_;
  std::unordered_map<std::int64_t, std::vector<std::size_t>> ending_;
  OsmRings made_;
};

}  // namespace

OsmRings osmRings(std::span<const std::vector<std::int64_t>* const> ways) {
  return RingBuilder(ways).build();
}

}  // namespace tern::imports
