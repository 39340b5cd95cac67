// The graph itself: its links, and blocks on them that stay until they are lifted.
#include <utility>

#include "TernCoreKit/answers/detail/AnswerParts.hpp"
#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::inline v5::detail {

namespace {

Value done() { return answerOf("ok", true); }

using BlockNode = void (TernASGrid::*)(const TernASNode& node, bool blocked);

Value blockNode(const TernActiveVenue& venue, RequestFields& fields, BlockNode block) {
  const std::int64_t id = fields.integer("node");
  const bool blocked = fields.flag("blocked");
  if (fields.error()) return {};
  const auto grid = venue.globalASGrid();
  if (const auto node = grid->getNodeById(id)) (*grid.*block)(*node, blocked);
  return done();
}

}  // namespace

Value answerBlockEdge(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t to = fields.integer("to");
  const bool blocked = fields.flag("blocked");
  if (fields.error()) return {};
  const auto grid = venue.globalASGrid();
  const auto a = grid->getNodeById(from);
  const auto b = grid->getNodeById(to);
  if (a && b) grid->shouldBlockEdgeBetweenNode(*a, *b, blocked);
  return done();
}

Value answerBlockEntry(TernActiveVenue& venue, RequestFields& fields) {
  return blockNode(venue, fields, &TernASGrid::shouldBlockEntryToNode);
}

Value answerBlockExit(TernActiveVenue& venue, RequestFields& fields) {
  return blockNode(venue, fields, &TernASGrid::shouldBlockExitFromNode);
}

Value answerNeighbors(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t id = fields.integer("node");
  if (fields.error()) return {};
  Value list = Value::list();
  if (const auto node = venue.globalASGrid()->getNodeById(id)) {
    for (const TernNeighbor& neighbor : node->neighbors()) list.append(neighborPart(neighbor));
  }
  return answerOf("neighbors", std::move(list));
}

}  // namespace tern::detail
