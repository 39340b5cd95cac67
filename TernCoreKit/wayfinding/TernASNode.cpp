#include "TernCoreKit/wayfinding/TernASNode.hpp"

#include <utility>

#include "TernCoreKit/wayfinding/detail/StandaloneNodes.hpp"

namespace tern {

namespace {

// All of a node but its predecessor.
detail::StandaloneNode pictureOf(const detail::NodeSource& source, detail::Position position) {
  detail::StandaloneNode picture{source.facts(position), source.height(position),
                                 source.progress(position), source.edges(position),
                                 source.neighbors(position)};
  picture.progress.parent = detail::noPosition;
  return picture;
}

}  // namespace

TernASNode TernASNode::initASNode(std::int64_t nodeId, double x, double y, float z,
                                  std::int64_t mapId, std::vector<TernASEdge> edges,
                                  std::vector<TernNeighbor> neighbors) {
  std::vector<detail::StandaloneNode> one;
  one.push_back({{nodeId, x, y, mapId}, z, {}, std::move(edges), std::move(neighbors)});
  return {std::make_shared<detail::StandaloneNodes>(std::move(one)), 0};
}

std::int64_t TernASNode::nodeId() const { return source_->facts(position_).nodeId; }
double TernASNode::x() const { return source_->facts(position_).x; }
double TernASNode::y() const { return source_->facts(position_).y; }
float TernASNode::z() const { return source_->height(position_); }
std::int64_t TernASNode::mapId() const { return source_->facts(position_).mapId; }

std::vector<TernASEdge> TernASNode::edges() const { return source_->edges(position_); }
std::vector<TernNeighbor> TernASNode::neighbors() const { return source_->neighbors(position_); }

bool TernASNode::visited() const { return source_->progress(position_).visited; }
bool TernASNode::closed() const { return source_->progress(position_).closed; }
float TernASNode::f() const { return g(); }
float TernASNode::g() const { return source_->progress(position_).score; }
float TernASNode::h() const { return 0; }
std::optional<float> TernASNode::distance() const { return source_->progress(position_).distance; }

std::optional<TernASNode> TernASNode::parent() const {
  const detail::Position parent = source_->progress(position_).parent;
  if (parent == detail::noPosition) return std::nullopt;
  return TernASNode(source_, parent);
}

std::int64_t TernASNode::usedEdgeTypeId() const {
  return source_->progress(position_).usedEdgeTypeId;
}

void TernASNode::reset() { source_->clearProgress(position_); }

TernASNode TernASNode::copyWithZone() const {
  std::vector<detail::StandaloneNode> chain;
  for (const detail::Position at : source_->chainTo(position_)) {
    if (!chain.empty()) chain.back().progress.parent = static_cast<detail::Position>(chain.size());
    chain.push_back(pictureOf(*source_, at));
  }
  return {std::make_shared<detail::StandaloneNodes>(std::move(chain)), 0};
}

std::vector<TernASNode> TernASNode::copiesWithoutParents(const std::vector<TernASNode>& nodes) {
  std::vector<detail::StandaloneNode> pictures;
  pictures.reserve(nodes.size());
  for (const TernASNode& node : nodes) pictures.push_back(pictureOf(*node.source_, node.position_));
  const auto source = std::make_shared<detail::StandaloneNodes>(std::move(pictures));
  std::vector<TernASNode> copies;
  copies.reserve(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    copies.push_back(TernASNode(source, static_cast<detail::Position>(i)));
  }
  return copies;
}

}  // namespace tern
