#include "tools/import/ways/Climbs.hpp"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/Shapes.hpp"

namespace tern::imports {

namespace {

// What of the smaller of two areas has to lie above the other.
constexpr double leastOverlap = 0.2;
constexpr double leastMoverSquareMetres = 1e-6;

bool isClimbed(LinkKind kind) {
  return kind == LinkKind::ramp || kind == LinkKind::stairs || kind == LinkKind::escalator ||
         familyOf(kind) == LinkKind::lift;
}

double squareMetresOf(const Shapes& shapes) {
  double sum = 0;
  for (const Polygon& shape : shapes) sum += areaOf(shape);
  return sum;
}

class Climber {
 public:
  Climber(const Site& site, std::span<const double> ordinals, Oddities& oddities)
      : site_(site), ordinals_(ordinals), oddities_(oddities) {
    for (std::size_t i = 0; i < site.areas.size(); ++i) {
      if (isClimbed(site.areas[i].kind) && !site.areas[i].shapes.empty()) climbed_.push_back(i);
    }
    for (const SiteMover& mover : site.movers) {
      const int side = ordinals[mover.from] < ordinals[mover.to] ? 1 : -1;
      told_.insert({mover.from, side});
      told_.insert({mover.to, -side});
    }
  }

  std::vector<Climb> find() {
    std::set<std::pair<std::size_t, std::size_t>> pairs;
    for (const std::size_t area : climbed_) {
      bool leadsOn = false;
      for (const int side : {1, -1}) {
        const auto other = nextTo(area, side);
        leadsOn = leadsOn || other || told_.contains({area, side});
        if (other) pairs.insert(side > 0 ? std::pair(area, *other) : std::pair(*other, area));
      }
      if (leadsOn || site_.areas[area].kind == LinkKind::ramp) continue;
      oddities_.remark(recordOf(site_.areas[area]), "leadsNowhere",
                       "On level " + Value(ordinals_[area]).printed() +
                           " nothing of its kind lies above or below it.");
    }
    std::vector<Climb> climbs;
    for (const auto& [low, high] : pairs) climbs.push_back({low, high});
    return climbs;
  }

 private:
  // Of those of the kind that lie above the area (or, with side -1, below it) the one that is the
  // fewest levels away and, of several, covers the most of it.
  std::optional<std::size_t> nextTo(std::size_t area, int side) const {
    if (told_.contains({area, side})) return std::nullopt;
    std::optional<std::size_t> best;
    double bestRise = 0;
    double bestCover = 0;
    for (const std::size_t other : climbed_) {
      const double rise = (ordinals_[other] - ordinals_[area]) * side;
      const bool isAlike = familyOf(site_.areas[other].kind) == familyOf(site_.areas[area].kind);
      if (rise <= 0 || !isAlike || (best && rise > bestRise)) continue;
      if (told_.contains({other, -side})) continue;
      const double cover = coverOf(area, other);
      if (cover < leastOverlap || (best && rise == bestRise && cover <= bestCover)) continue;
      best = other;
      bestRise = rise;
      bestCover = cover;
    }
    return best;
  }

  // How much of the smaller of the two lies above the other.
  double coverOf(std::size_t a, std::size_t b) const {
    const Shapes& first = site_.areas[a].shapes;
    const Shapes& second = site_.areas[b].shapes;
    if (!boxOfAll(first).meets(boxOfAll(second))) return 0;
    const double smaller = std::min(squareMetresOf(first), squareMetresOf(second));
    return squareMetresOf(common(first, second)) / std::max(smaller, leastMoverSquareMetres);
  }

  const Site& site_;
  std::span<const double> ordinals_;
  Oddities& oddities_;
  std::vector<std::size_t> climbed_;
  // Areas and sides of which the site says itself where they lead.
  std::set<std::pair<std::size_t, int>> told_;
};

}  // namespace

LinkKind familyOf(LinkKind kind) { return kind == LinkKind::stepFreeLift ? LinkKind::lift : kind; }

std::vector<Climb> climbsIn(const Site& site, std::span<const double> ordinals,
                            Oddities& oddities) {
  return Climber(site, ordinals, oddities).find();
}

}  // namespace tern::imports
