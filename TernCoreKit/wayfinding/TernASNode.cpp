#include "TernCoreKit/wayfinding/TernASNode.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/wayfinding/detail/NodeCopies.hpp"
#include "TernCoreKit/wayfinding/detail/StandaloneNodes.hpp"

namespace tern::inline v5 {

TernASNode TernASNode::initASNode(std::int64_t nodeId, double x, double y, float z,
                                  std::int64_t mapId, std::vector<TernASEdge> edges,
                                  std::vector<TernNeighbor> neighbors) {
  detail::Indexed<detail::Position, detail::StandaloneNode> one;
  one.push_back({{nodeId, x, y, z, mapId}, {}, {}, std::move(edges), std::move(neighbors)});
  return {std::make_shared<detail::StandaloneNodes>(std::move(one)), detail::Position{0}};
}

std::int64_t TernASNode::nodeId() const { return source_->facts(position_).nodeId; }
double TernASNode::x() const { return source_->facts(position_).x; }
double TernASNode::y() const { return source_->facts(position_).y; }
float TernASNode::z() const { return source_->facts(position_).z; }
std::int64_t TernASNode::mapId() const { return source_->facts(position_).mapId; }

std::vector<TernASEdge> TernASNode::edges() const { return source_->edges(position_); }
std::vector<TernNeighbor> TernASNode::neighbors() const { return source_->neighbors(position_); }

bool TernASNode::visited() const { return source_->progress(position_).visited; }
bool TernASNode::closed() const { return source_->progress(position_).closed; }
float TernASNode::f() const { return g(); }
float TernASNode::g() const { return source_->progress(position_).score; }
float TernASNode::h() const { return 0; }
std::optional<float> TernASNode::distance() const {
  return source_->distances({&position_, 1}).front();
}

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
  std::vector<detail::Position> chain = source_->chainTo(position_);
  std::ranges::reverse(chain);
  copies->add(source_, chain);
  for (std::uint32_t i = 1; i < chain.size(); ++i) {
    copies->setParent(detail::Position{i}, detail::Position{i - 1});
  }
  return {copies, detail::Position{static_cast<std::uint32_t>(chain.size() - 1)}};
}

std::vector<TernASNode> TernASNode::copiesWithoutParents(const std::vector<TernASNode>& nodes) {
  const auto source = std::make_shared<detail::NodeCopies>();
  source->reserve(nodes.size());
  // Neighbouring nodes mostly come from one source.
  std::vector<detail::Position> run;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    run.push_back(nodes[i].position_);
    if (i + 1 < nodes.size() && nodes[i + 1].source_ == nodes[i].source_) continue;
    source->add(nodes[i].source_, run);
    run.clear();
  }
  std::vector<TernASNode> copies;
  copies.reserve(nodes.size());
  for (std::uint32_t i = 0; i < nodes.size(); ++i) {
    copies.push_back(TernASNode(source, detail::Position{i}));
  }
  return copies;
}

bool operator==(const TernASNode& a, const TernASNode& b) {
  return a.source_->original(a.position_) == b.source_->original(b.position_);
}

}  // namespace tern
