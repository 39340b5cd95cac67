#include "TernCoreKit/wayfinding/TernASNode.hpp"

#include <utility>

#include "TernCoreKit/wayfinding/detail/NodeCopies.hpp"
#include "TernCoreKit/wayfinding/detail/StandaloneNodes.hpp"

namespace tern {

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
  const auto copies = std::make_shared<detail::NodeCopies>();
  detail::Position count = 0;
  for (const detail::Position at : source_->chainTo(position_)) {
    copies->add(source_, at);
    if (count > 0) copies->setParent(count - 1, count);
    ++count;
  }
  return {copies, 0};
}

std::vector<TernASNode> TernASNode::copiesWithoutParents(const std::vector<TernASNode>& nodes) {
  const auto source = std::make_shared<detail::NodeCopies>();
  for (const TernASNode& node : nodes) source->add(node.source_, node.position_);
  std::vector<TernASNode> copies;
  copies.reserve(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    copies.push_back(TernASNode(source, static_cast<detail::Position>(i)));
  }
  return copies;
}

}  // namespace tern
