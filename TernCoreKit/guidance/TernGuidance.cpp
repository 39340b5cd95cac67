#include "TernCoreKit/guidance/TernGuidance.hpp"

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <utility>

#include "TernCoreKit/guidance/detail/Landmarks.hpp"
#include "TernCoreKit/guidance/detail/Movers.hpp"
#include "TernCoreKit/guidance/detail/PhraseBook.hpp"
#include "TernCoreKit/guidance/detail/PlanCheck.hpp"
#include "TernCoreKit/guidance/detail/Plane.hpp"
#include "TernCoreKit/guidance/detail/StepPlan.hpp"
#include "TernCoreKit/guidance/detail/StepTexts.hpp"
#include "TernCoreKit/guidance/detail/WalkedRoute.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"

namespace tern::inline v5 {

namespace {

using detail::Decision;
using detail::MapPlace;

// Tells one route.
class Telling {
 public:
  Telling(detail::Venues venues, const TernASGrid& grid, const TernRoute& route,
          const detail::PhraseBook& book)
      : places_(venues),
        book_(book),
        route_(detail::walkedRoute(route, places_)),
        partings_(partings(route_, grid, places_)),
        grid_(grid) {}

  std::vector<TernStep> steps() {
    std::vector<TernStep> all;
    if (route_.nodes.empty()) return all;
    std::vector<Decision> plan = planOf(route_, partings_);
    tellWhereWaysMislead(plan, route_, grid_, places_);
    goal_ = placeOf(route_.nodes.back()).destination;
    for (std::size_t i = 0; i < plan.size(); ++i) {
      const std::size_t next = i + 1 < plan.size() ? plan[i + 1].node : plan[i].node;
      all.push_back(stepOf(plan[i], next));
    }
    return all;
  }

 private:
  const MapPlace& mapOf(std::size_t node) { return places_.of(route_.nodes[node].mapId); }
  const detail::Landmarks& landmarksOf(std::size_t node) {
    const MapPlace& map = mapOf(node);
    return landmarks_.try_emplace(route_.nodes[node].mapId, map).first->second;
  }
  detail::NamedPlace placeOf(const detail::WalkedNode& node) {
    return detail::placeAt(mapOf(static_cast<std::size_t>(&node - route_.nodes.data())), node.id);
  }

  TernStep stepOf(const Decision& decision, std::size_t next) {
    TernStep step;
    step.kind = decision.kind;
    step.direction = detail::directionOf(decision.degrees);
    step.mapId = route_.nodes[decision.node].mapId;
    step.at = route_.nodes[decision.node].id;
    for (std::size_t i = decision.node; i < next; ++i) step.mm += route_.nodes[i + 1].mm;
    step.seconds = secondsOf(decision, next);
    if (decision.ride != nullptr) step.mover = decision.ride->pathTypeId;
    const std::int64_t to = route_.nodes[decision.resume].mapId;
    if (to != step.mapId) step.toMapId = to;
    tell(step, decision);
    return step;
  }

  double secondsOf(const Decision& decision, std::size_t next) {
    double walkedMm = 0;
    const std::size_t first = decision.ride != nullptr ? decision.ride->exit : decision.node;
    for (std::size_t i = first; i < next; ++i) walkedMm += route_.nodes[i + 1].mm;
    const double walking = detail::walkingSeconds(walkedMm);
    return decision.ride != nullptr ? walking + ridingTime(*decision.ride) : walking;
  }

  double ridingTime(const detail::Ride& ride) {
    const MapPlace& from = mapOf(ride.entry);
    const MapPlace& to = mapOf(ride.exit);
    double metres = 0;
    int changes = 0;
    for (std::size_t i = ride.entry; i < ride.exit; ++i) {
      const auto& here = route_.nodes[i];
      const auto& there = route_.nodes[i + 1];
      const bool isSameMap = here.mapId == there.mapId;
      if (isSameMap) metres += detail::apart(here.at, there.at);
      changes += isSameMap ? 0 : 1;
    }
    const auto pathType = detail::pathTypeOf(from, ride.pathTypeId);
    return detail::ridingSeconds(pathType.get(), floorsBetween(from, to, changes), metres);
  }

  // As many as maps are changed, downwards where the levels say so.
  static int floorsBetween(const MapPlace& from, const MapPlace& to, int changes) {
    if (from.floor == nullptr || to.floor == nullptr) return changes;
    return to.floor->level.integer() < from.floor->level.integer() ? -changes : changes;
  }

  void tell(TernStep& step, const Decision& decision) {
    const MapPlace& from = mapOf(decision.node);
    detail::StepWords words{step, from, mapOf(decision.resume), {}, {}};
    if (step.kind == TernStep::Kind::depart || step.kind == TernStep::Kind::arrive) {
      words.place = placeAtEnd(step, decision.node);
    } else if (step.direction) {
      words.seen = seenAt(decision.node);
      if (words.seen) step.landmark = TernStep::Landmark{words.seen->landmark->id};
    }
    step.text = textOf(book_, words);
    if (step.landmark) told_ = step.landmark->id;
  }

  std::string placeAtEnd(TernStep& step, std::size_t node) {
    const detail::NamedPlace place = placeOf(route_.nodes[node]);
    if (place.destination) step.landmark = TernStep::Landmark{*place.destination};
    if (!place.name.empty()) return place.name;
    const std::string text = placeText(book_, mapOf(node), route_.nodes[node].id);
    if (!text.empty()) return text;
    return book_.text(step.kind == TernStep::Kind::depart ? "somewhere" : "goal");
  }

  // Of the line walked on the map up to the node; neither the goal nor what was told last.
  std::optional<detail::SeenLandmark> seenAt(std::size_t node) {
    std::vector<TernCoordinate> line;
    std::size_t first = node;
    while (first > 0 && route_.nodes[first - 1].mapId == route_.nodes[node].mapId) --first;
    for (std::size_t i = first; i <= node; ++i) line.push_back(route_.nodes[i].at);
    return landmarksOf(node).atEnd(line, told_, goal_);
  }

  detail::MapPlaces places_;
  const detail::PhraseBook& book_;
  const detail::WalkedRoute route_;
  const std::vector<std::size_t> partings_;
  const TernASGrid& grid_;
  std::map<std::int64_t, detail::Landmarks> landmarks_;
  std::optional<std::int64_t> told_;
  std::optional<std::int64_t> goal_;
};

}  // namespace

TernGuidance::TernGuidance(std::vector<std::shared_ptr<const TernVenueData>> venues,
                           std::shared_ptr<TernASGrid> grid)
    : venues_(std::move(venues)), grid_(std::move(grid)) {}

std::optional<std::vector<TernStep>> TernGuidance::stepsOf(const TernRoute& route,
                                                           std::string_view language) const {
  std::vector<TernStep> steps;
  const auto work = [&] {
    // In the order of their addresses, as whoever locks several.
    std::set<const TernVenueData*> distinct;
    for (const auto& venue : venues_) distinct.insert(venue.get());
    std::vector<std::unique_lock<Mutex>> records;
    for (const TernVenueData* venue : distinct) records.emplace_back(venue->recordsMutex());
    const auto book = detail::PhraseBook::of(language);
    steps = Telling(venues_, *grid_, route, book).steps();
  };
  if (!detail::attempt(work)) return std::nullopt;
  return steps;
}

std::string TernGuidance::sumOf(const std::vector<TernStep>& steps, std::string_view language) {
  double mm = 0;
  double seconds = 0;
  for (const TernStep& step : steps) {
    mm += step.mm;
    seconds += step.seconds;
  }
  const auto book = detail::PhraseBook::of(language);
  return book.text("sum", {{"length", book.length(mm)}, {"minutes", book.minutes(seconds)}});
}

std::string TernGuidance::lengthText(double mm, std::string_view language) {
  return detail::PhraseBook::of(language).length(mm);
}

std::vector<std::string> TernGuidance::languages() { return detail::PhraseBook::languages(); }

}  // namespace tern
