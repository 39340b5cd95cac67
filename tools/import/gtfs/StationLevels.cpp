#include "tools/import/gtfs/StationLevels.hpp"

#include <algorithm>
#include <array>
#include <deque>
#include <utility>

namespace tern::imports {

namespace {

// After so many rounds what still climbs to its own level goes round in a ring.
constexpr int mostLevelRounds = 16;

class LevelSolver {
 public:
  LevelSolver(const std::vector<std::optional<double>>& stated, std::span<const LevelLink> links)
      : links_(links), ordinals_(stated), isFixed_(stated.size()), linksOf_(stated.size()) {
    for (std::size_t i = 0; i < links.size(); ++i) {
      linksOf_[links[i].from].push_back(i);
      linksOf_[links[i].to].push_back(i);
    }
  }

  std::vector<double> solve(const std::vector<bool>& isEntrance) {
    std::vector<std::size_t> known;
    for (std::size_t i = 0; i < ordinals_.size(); ++i) {
      if (ordinals_[i]) known.push_back(i);
    }
    spread(std::move(known));
    for (std::size_t i = 0; i < ordinals_.size(); ++i) {
      if (isEntrance[i] && !ordinals_[i]) settle(i, 0);
    }
    for (std::size_t i = 0; i < ordinals_.size(); ++i) isFixed_[i] = ordinals_[i].has_value();
    climb();
    for (std::size_t i = 0; i < ordinals_.size(); ++i) {
      if (ordinals_[i]) continue;
      settle(i, 0);
      climb();
    }
    partLevels();
    std::vector<double> solved;
    for (const auto& ordinal : ordinals_) solved.push_back(*ordinal);
    return solved;
  }

 private:
  // The ordinals of these nodes over what is walked from them, the nearest first.
  void spread(std::vector<std::size_t> nodes) {
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const std::size_t node = nodes[i];
      queueClimbs(node);
      for (const std::size_t index : linksOf_[node]) {
        const std::size_t other = otherEnd(index, node);
        if (links_[index].climbs || ordinals_[other]) continue;
        ordinals_[other] = ordinals_[node];
        nodes.push_back(other);
      }
    }
  }

  void settle(std::size_t node, double ordinal) {
    ordinals_[node] = ordinal;
    spread({node});
  }

  std::size_t otherEnd(std::size_t link, std::size_t node) const {
    return links_[link].from == node ? links_[link].to : links_[link].from;
  }

  void queueClimbs(std::size_t node) {
    for (const std::size_t index : linksOf_[node]) {
      const LevelLink& link = links_[index];
      if (!link.climbs || ordinals_[otherEnd(index, node)]) continue;
      const std::size_t rank = link.isLift ? 2 : link.rise == 0 ? 1 : 0;
      waiting_[rank].push_back(index);
    }
  }

  // The most telling link first, nearest to what is known.
  void climb() {
    while (true) {
      const auto rank = std::ranges::find_if(waiting_, [](const auto& q) { return !q.empty(); });
      if (rank == waiting_.end()) return;
      const LevelLink& link = links_[rank->front()];
      rank->pop_front();
      if (ordinals_[link.from] && ordinals_[link.to]) continue;
      const bool isForward = ordinals_[link.from].has_value();
      const std::size_t from = isForward ? link.from : link.to;
      const std::size_t to = isForward ? link.to : link.from;
      const int rise = isForward ? link.rise : -link.rise;
      settle(to, *ordinals_[from] + (rise != 0 ? rise : awayFromStreet(*ordinals_[from])));
    }
  }

  static int awayFromStreet(double ordinal) { return ordinal > 0 ? 1 : -1; }

  // Two ways from the street may leave both ends of a flight on one level; the one farther on then
  // moves on by a level, with all that is walked from it.
  void partLevels() {
    const std::vector<std::size_t> decks = decksOf();
    std::vector<double> moved(decks.size());
    const auto at = [&](std::size_t node) { return *ordinals_[node] + moved[decks[node]]; };
    bool isDone = false;
    for (int round = 0; round < mostLevelRounds && !isDone; ++round) {
      isDone = true;
      for (const LevelLink& link : links_) {
        const bool areApart = decks[link.from] == decks[link.to] || at(link.from) != at(link.to);
        if (!link.climbs || areApart) continue;
        const bool isForward = !isFixed_[link.to];
        const std::size_t node = isForward ? link.to : link.from;
        if (isFixed_[node]) continue;
        const int rise = isForward ? link.rise : -link.rise;
        moved[decks[node]] += rise != 0 ? rise : awayFromStreet(at(node));
        isDone = false;
      }
    }
    for (std::size_t i = 0; i < decks.size(); ++i) *ordinals_[i] += moved[decks[i]];
  }

  // Of each node the number of those that are walked from one another.
  std::vector<std::size_t> decksOf() const {
    constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::vector<std::size_t> decks(ordinals_.size(), none);
    for (std::size_t first = 0; first < decks.size(); ++first) {
      std::vector<std::size_t> stack;
      if (decks[first] == none) stack.push_back(first);
      while (!stack.empty()) {
        const std::size_t node = stack.back();
        stack.pop_back();
        decks[node] = first;
        for (const std::size_t index : linksOf_[node]) {
          const std::size_t other = otherEnd(index, node);
          const bool isWalked = !links_[index].climbs && ordinals_[other] == ordinals_[node];
          if (isWalked && decks[other] == none) stack.push_back(other);
        }
      }
    }
    return decks;
  }

  std::span<const LevelLink> links_;
  std::vector<std::optional<double>> ordinals_;
  std::vector<bool> isFixed_;
  std::vector<std::vector<std::size_t>> linksOf_;
  std::array<std::deque<std::size_t>, 3> waiting_;
};

}  // namespace

std::vector<double> ordinalsOf(const std::vector<std::optional<double>>& stated,
                               const std::vector<bool>& isEntrance,
                               std::span<const LevelLink> links) {
  return LevelSolver(stated, links).solve(isEntrance);
}

}  // namespace tern::imports
