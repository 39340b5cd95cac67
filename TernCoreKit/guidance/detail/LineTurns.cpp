#include "TernCoreKit/guidance/detail/LineTurns.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "TernCoreKit/guidance/detail/Plane.hpp"
#include "TernCoreKit/platform/detail/common/PortableMath.hpp"

namespace tern::inline v5::detail {

namespace {

// How far a line may run beside the straight one and still count as it. Metres.
constexpr double tolerance = 1.5;
// Within this what bends the same way is one turn, unless it comes to more than a corner. Metres
// and degrees.
constexpr double cornerLength = 8;
constexpr double mostOfACorner = 120;
// What bends less is told nobody, where ways part too. Degrees.
constexpr double leastDecision = 10;

double distanceToSegment(TernCoordinate point, TernCoordinate first, TernCoordinate last) {
  const TernCoordinate way = last - first;
  const TernCoordinate off = point - first;
  const double square = way.x * way.x + way.y * way.y;
  const double share =
      square > 0 ? std::clamp((off.x * way.x + off.y * way.y) / square, 0.0, 1.0) : 0;
  return apart(off, {share * way.x, share * way.y});
}

// The points that stay when wiggles are taken out between each two that stay for sure, ascending.
std::vector<std::size_t> simplified(std::span<const TernCoordinate> line,
                                    std::vector<std::size_t> kept) {
  std::vector<std::pair<std::size_t, std::size_t>> open;
  for (std::size_t i = 1; i < kept.size(); ++i) open.emplace_back(kept[i - 1], kept[i]);
  while (!open.empty()) {
    const auto [first, last] = open.back();
    open.pop_back();
    std::size_t furthest = first;
    double most = tolerance;
    for (std::size_t i = first + 1; i < last; ++i) {
      const double away = distanceToSegment(line[i], line[first], line[last]);
      if (away > most) {
        most = away;
        furthest = i;
      }
    }
    if (furthest == first) continue;
    kept.push_back(furthest);
    open.emplace_back(first, furthest);
    open.emplace_back(furthest, last);
  }
  std::ranges::sort(kept);
  return kept;
}

double wrapped(double degrees) {
  const double within = std::remainder(degrees, 360);
  return within == -180 ? 180 : within;
}

struct Bend {
  LineTurn turn;
  // Metres from the line's beginning to where it begins and where it ends.
  double from = 0;
  double to = 0;
  bool isDecision = false;
};

bool areOneTurn(const Bend& first, const Bend& second) {
  const double gap = second.from - first.to;
  const double sum = first.turn.degrees + second.turn.degrees;
  const bool isOneWay = (first.turn.degrees > 0) == (second.turn.degrees > 0);
  return gap < tellableApart || (isOneWay && gap <= cornerLength && std::abs(sum) <= mostOfACorner);
}

std::vector<Bend> joined(const std::vector<Bend>& bends) {
  std::vector<Bend> whole;
  for (const Bend& bend : bends) {
    if (whole.empty() || !areOneTurn(whole.back(), bend)) {
      whole.push_back(bend);
      continue;
    }
    Bend& last = whole.back();
    last.turn.degrees = wrapped(last.turn.degrees + bend.turn.degrees);
    last.to = bend.to;
    last.isDecision = last.isDecision || bend.isDecision;
  }
  return whole;
}

// Metres from the line's beginning to each of its points.
std::vector<double> walkedTo(std::span<const TernCoordinate> line) {
  std::vector<double> walked(line.size());
  for (std::size_t i = 1; i < line.size(); ++i) {
    walked[i] = walked[i - 1] + apart(line[i - 1], line[i]);
  }
  return walked;
}

}  // namespace

double degreesBetween(TernCoordinate before, TernCoordinate after) {
  const double cross = before.x * after.y - before.y * after.x;
  const double dot = before.x * after.x + before.y * after.y;
  return cross == 0 && dot == 0 ? 0 : portableAngle(cross, dot) * 180 / std::numbers::pi;
}

std::vector<LineTurn> turnsOf(std::span<const TernCoordinate> line,
                              std::span<const std::size_t> decisions) {
  if (line.size() < 3) return {};
  std::vector<std::size_t> sure{0};
  sure.insert(sure.end(), decisions.begin(), decisions.end());
  sure.push_back(line.size() - 1);
  const std::vector<std::size_t> kept = simplified(line, std::move(sure));
  const std::vector<double> walked = walkedTo(line);
  std::vector<Bend> bends;
  for (std::size_t i = 1; i + 1 < kept.size(); ++i) {
    const double degrees =
        degreesBetween(line[kept[i]] - line[kept[i - 1]], line[kept[i + 1]] - line[kept[i]]);
    const double at = walked[kept[i]];
    const bool isDecision = std::ranges::binary_search(decisions, kept[i]);
    bends.push_back({{kept[i], degrees}, at, at, isDecision});
  }
  std::vector<LineTurn> turns;
  for (const Bend& bend : joined(bends)) {
    const double least = bend.isDecision ? leastDecision : leastTurn;
    if (std::abs(bend.turn.degrees) >= least) turns.push_back(bend.turn);
  }
  return turns;
}

}  // namespace tern::detail
