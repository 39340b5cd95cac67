#include "tools/import/draft/NearNodes.hpp"

#include <gtest/gtest.h>

namespace tern::imports {
namespace {

DraftNode nodeAt(std::size_t floor, Point at) {
  DraftNode node;
  node.floor = floor;
  node.at = at;
  return node;
}

DraftLink linkOf(std::size_t from, std::size_t to, LinkKind kind) {
  DraftLink link;
  link.from = from;
  link.to = to;
  link.kind = kind;
  return link;
}

DraftFloor floorAt(double ordinal) {
  DraftFloor floor;
  floor.ordinal = ordinal;
  return floor;
}

TEST(NearNodes, nodeOnAWayOnFootComesBeforeANearerCabin) {
  Draft draft;
  draft.floors = {floorAt(0)};
  draft.nodes = {nodeAt(0, {0, 0}), nodeAt(0, {10, 0}), nodeAt(0, {20, 0})};
  draft.links = {linkOf(0, 1, LinkKind::lift), linkOf(1, 2, LinkKind::walkway)};
  EXPECT_EQ(NearNodes(draft).nearest(0, {1, 0}, 30), 1U);
}

TEST(NearNodes, cabinIsBetterThanNothing) {
  Draft draft;
  draft.floors = {floorAt(0)};
  draft.nodes = {nodeAt(0, {0, 0}), nodeAt(0, {10, 0})};
  draft.links = {linkOf(0, 1, LinkKind::stairs)};
  EXPECT_EQ(NearNodes(draft).nearest(0, {1, 0}, 30), 0U);
}

TEST(NearNodes, whatIsTooFarIsNotFound) {
  Draft draft;
  draft.floors = {floorAt(0)};
  draft.nodes = {nodeAt(0, {0, 0})};
  EXPECT_EQ(NearNodes(draft).nearest(0, {29, 0}, 30), 0U);
  EXPECT_EQ(NearNodes(draft).nearest(0, {31, 0}, 30), std::nullopt);
}

TEST(NearNodes, halfDeckIsReachedButNotAnotherFloor) {
  Draft draft;
  draft.floors = {floorAt(0), floorAt(0.5), floorAt(1)};
  draft.nodes = {nodeAt(1, {0, 0}), nodeAt(1, {5, 0})};
  draft.links = {linkOf(0, 1, LinkKind::walkway)};
  EXPECT_EQ(NearNodes(draft).nearest(0, {4, 0}, 30), 1U);
  draft.nodes = {nodeAt(2, {0, 0}), nodeAt(2, {5, 0})};
  EXPECT_EQ(NearNodes(draft).nearest(0, {4, 0}, 30), std::nullopt);
}

}  // namespace
}  // namespace tern::imports
