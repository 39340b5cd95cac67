#include "tools/import/draft/NearNodes.hpp"

#include <cmath>
#include <limits>

namespace tern::imports {

namespace {

constexpr double halfFloor = 0.5;

bool isWalked(LinkKind kind) {
  return kind == LinkKind::walkway || kind == LinkKind::ramp || kind == LinkKind::gate;
}

}  // namespace

NearNodes::NearNodes(const Draft& draft) {
  std::vector<bool> isReached(draft.nodes.size());
  for (const DraftLink& link : draft.links) {
    if (!isWalked(link.kind)) continue;
    isReached[link.from] = true;
    isReached[link.to] = true;
  }
  const auto treesOf = [&](auto isIn) {
    std::vector<std::vector<Entry>> entries(draft.floors.size());
    for (std::size_t i = 0; i < draft.nodes.size(); ++i) {
      const DraftNode& node = draft.nodes[i];
      if (isIn(i)) entries[node.floor].push_back({node.at.x, node.at.y, i});
    }
    std::vector<Tree> trees;
    for (const std::vector<Entry>& floor : entries) trees.push_back(Tree::init(floor));
    return trees;
  };
  walked_ = treesOf([&](std::size_t node) { return isReached[node]; });
  all_ = treesOf([](std::size_t) { return true; });
  for (const DraftFloor& floor : draft.floors) ordinals_.push_back(floor.ordinal);
}

std::optional<std::size_t> NearNodes::nearest(std::size_t floor, Point at,
                                              double withinMetres) const {
  for (const std::vector<Tree>* trees : {&walked_, &all_}) {
    if (const auto node = nearestOn(*trees, floor, at, withinMetres)) return node;
  }
  for (std::size_t other = 0; other < ordinals_.size(); ++other) {
    const double apart = std::abs(ordinals_[other] - ordinals_[floor]);
    if (apart == 0 || apart > halfFloor) continue;
    if (const auto node = nearestOn(walked_, other, at, withinMetres)) return node;
  }
  return std::nullopt;
}

std::optional<std::size_t> NearNodes::nearestOn(const std::vector<Tree>& trees, std::size_t floor,
                                                Point at, double withinMetres) const {
  constexpr std::size_t none = std::numeric_limits<std::size_t>::max();
  const auto found = trees[floor].nearest({at.x, at.y, none}, withinMetres * withinMetres);
  return found ? std::optional(found->node) : std::nullopt;
}

}  // namespace tern::imports
