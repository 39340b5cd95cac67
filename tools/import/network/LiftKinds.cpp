#include "tools/import/network/LiftKinds.hpp"

#include <unordered_map>
#include <utility>

namespace tern::imports {

namespace {

// Which nodes hang together by lifts.
class Shafts {
 public:
  void join(std::size_t a, std::size_t b) { parents_[shaftOf(a)] = shaftOf(b); }

  std::size_t shaftOf(std::size_t node) {
    std::size_t root = node;
    while (parents_.try_emplace(root, root).first->second != root) root = parents_[root];
    while (node != root) node = std::exchange(parents_[node], root);
    return root;
  }

 private:
  std::unordered_map<std::size_t, std::size_t> parents_;
};

// What the landings of a lift say.
struct Landings {
  int count = 0;
  int stepFree = 0;
  bool areStepFree() const { return count > 0 && stepFree == count; }
};

}  // namespace

void settleLifts(Draft& draft, const std::vector<StatedLift>& lifts) {
  Shafts shafts;
  for (const StatedLift& lift : lifts) {
    shafts.join(draft.links[lift.link].from, draft.links[lift.link].to);
  }
  std::unordered_map<std::size_t, Landings> landings;
  for (const StatedLift& lift : lifts) {
    const DraftLink& link = draft.links[lift.link];
    if (draft.nodes[link.from].floor != draft.nodes[link.to].floor) continue;
    Landings& ofShaft = landings[shafts.shaftOf(link.from)];
    ++ofShaft.count;
    if (lift.says == LiftStatement::stepFree) ++ofShaft.stepFree;
  }
  for (const StatedLift& lift : lifts) {
    DraftLink& link = draft.links[lift.link];
    const bool isAsLandings =
        lift.says == LiftStatement::nothing && landings[shafts.shaftOf(link.from)].areStepFree();
    const bool isStepFree = lift.says == LiftStatement::stepFree || isAsLandings;
    link.kind = isStepFree ? LinkKind::stepFreeLift : LinkKind::lift;
    if (isAsLandings) {
      draft.oddities.remark(link.id, "lift",
                            "It does not say what kind of lift it is; all landings "
                            "of this lift say that it is step-free.");
    }
  }
}

}  // namespace tern::imports
