#include "tools/import/network/LiftKinds.hpp"

#include <gtest/gtest.h>

namespace tern::imports {
namespace {

// A lift over two floors: landing, cabin, cabin, landing.
Draft liftOf() {
  Draft draft;
  draft.floors.resize(2);
  draft.nodes.resize(4);
  draft.nodes[2].floor = 1;
  draft.nodes[3].floor = 1;
  draft.links.resize(3);
  for (std::size_t i = 0; i < 3; ++i) {
    draft.links[i].id = "link " + std::to_string(i);
    draft.links[i].from = i;
    draft.links[i].to = i + 1;
    draft.links[i].kind = LinkKind::lift;
  }
  return draft;
}

Draft settled(LiftStatement below, LiftStatement shaft, LiftStatement above) {
  Draft draft = liftOf();
  settleLifts(draft, {{0, below}, {1, shaft}, {2, above}});
  return draft;
}

using enum LiftStatement;

TEST(LiftKinds, shaftThatSaysNothingIsAsItsLandings) {
  const Draft draft = settled(stepFree, nothing, stepFree);
  EXPECT_EQ(draft.links[1].kind, LinkKind::stepFreeLift);
  ASSERT_EQ(draft.oddities.told().size(), 1U);
  EXPECT_EQ(draft.oddities.told()[0].id, "link 1");
  EXPECT_EQ(draft.oddities.told()[0].kind, "lift");
}

TEST(LiftKinds, shaftIsNotStepFreeUnlessAllLandingsAre) {
  EXPECT_EQ(settled(stepFree, nothing, notStepFree).links[1].kind, LinkKind::lift);
  EXPECT_EQ(settled(stepFree, nothing, nothing).links[1].kind, LinkKind::lift);
  EXPECT_EQ(settled(stepFree, notStepFree, stepFree).links[1].kind, LinkKind::lift);
}

TEST(LiftKinds, unknownLiftIsNeverStepFree) {
  const Draft draft = settled(nothing, nothing, nothing);
  for (const DraftLink& link : draft.links) EXPECT_EQ(link.kind, LinkKind::lift);
  EXPECT_TRUE(draft.oddities.told().empty());
}

TEST(LiftKinds, whatALinkSaysItselfHolds) {
  const Draft draft = settled(notStepFree, stepFree, stepFree);
  EXPECT_EQ(draft.links[0].kind, LinkKind::lift);
  EXPECT_EQ(draft.links[1].kind, LinkKind::stepFreeLift);
}

TEST(LiftKinds, shaftWithoutLandingsIsUnknown) {
  Draft draft = liftOf();
  settleLifts(draft, {{1, nothing}});
  EXPECT_EQ(draft.links[1].kind, LinkKind::lift);
}

TEST(LiftKinds, oneLiftDoesNotSpeakForAnother) {
  Draft draft = liftOf();
  draft.nodes.resize(6);
  draft.nodes[5].floor = 1;
  draft.links.resize(4);
  draft.links[3].id = "other";
  draft.links[3].from = 4;
  draft.links[3].to = 5;
  settleLifts(draft, {{0, stepFree}, {1, nothing}, {2, stepFree}, {3, nothing}});
  EXPECT_EQ(draft.links[3].kind, LinkKind::lift);
}

}  // namespace
}  // namespace tern::imports
