// How far it is: from each of several waypoints to each of several, and how far one gets. Costs and
// lengths are those that a route says of its pair of waypoints.
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "TernCoreKit/answers/detail/AnswerParts.hpp"
#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernWalks.hpp"

namespace tern::inline v5::detail {

namespace {

using Ids = std::vector<std::int64_t>;
using Rows = std::vector<TernWalks::Row>;

// Of one matrix. A pair takes about eighty bytes until it is told, so that this many are what a
// phone can spare; a larger matrix comes as well in several, since each row is a search of its own.
constexpr std::size_t mostPairs = 4'000'000;

// The venue's routes know ids of 32 bits.
Ids narrowed(const Ids& ids) {
  Ids narrow;
  for (const std::int64_t id : ids) narrow.push_back(static_cast<std::int32_t>(id));
  return narrow;
}

// Between waypoints that the venue knows. Fails: by std::bad_alloc, which becomes the answer.
Rows walksBetween(const TernActiveVenue& venue, const Ids& from, const Ids& to,
                  std::int64_t level) {
  TernWalks walks;
  walks.grid = venue.globalASGrid();
  walks.maps = venue.maps;
  auto rows = walks.between(narrowed(from), narrowed(to), level);
  if (!rows) breakOffAttempt();
  const auto isUnknown = [&](std::int64_t id) { return walks.grid->getWPById(id) == nullptr; };
  for (std::size_t i = 0; i < from.size(); ++i) {
    if (isUnknown(from[i])) (*rows)[i].assign(to.size(), std::nullopt);
  }
  for (std::size_t j = 0; j < to.size(); ++j) {
    if (!isUnknown(to[j])) continue;
    for (TernWalks::Row& row : *rows) row[j].reset();
  }
  return *std::move(rows);
}

// A list for each row, of one of the numbers of its walks; null where there is none.
Value tablePart(const Rows& rows, float TernWalk::*number) {
  Value table = Value::list();
  for (const TernWalks::Row& row : rows) {
    Value cells = Value::list();
    for (const auto& walk : row) {
      cells.append(walk ? Value(shortestDouble((*walk).*number)) : Value(nullptr));
    }
    table.append(std::move(cells));
  }
  return table;
}

// In the order of the list.
Ids withoutRepeats(const Ids& ids) {
  std::unordered_set<std::int64_t> seen;
  Ids distinct;
  for (const std::int64_t id : ids) {
    if (seen.insert(id).second) distinct.push_back(id);
  }
  return distinct;
}

Ids allWaypoints(const TernASGrid& grid) {
  Ids ids;
  for (const auto& waypoint : grid.waypoints()) ids.push_back(waypoint->id.integer());
  return withoutRepeats(ids);
}

// The cheapest walk to each of the waypoints from any start, of equally cheap ones the first. Some
// starts at a time: together they share what is prepared, and all at once would take a table.
TernWalks::Row cheapestWalks(const TernActiveVenue& venue, const Ids& from, const Ids& to,
                             std::int64_t level) {
  constexpr std::size_t together = 16;
  TernWalks::Row best(to.size());
  const Ids starts = withoutRepeats(from);
  for (std::size_t first = 0; first < starts.size(); first += together) {
    const auto begin = starts.begin() + static_cast<std::ptrdiff_t>(first);
    const std::size_t count = std::min(together, starts.size() - first);
    const Ids some(begin, begin + static_cast<std::ptrdiff_t>(count));
    for (const TernWalks::Row& row : walksBetween(venue, some, to, level)) {
      for (std::size_t i = 0; i < to.size(); ++i) {
        if (row[i] && (!best[i] || row[i]->cost < best[i]->cost)) best[i] = row[i];
      }
    }
  }
  return best;
}

struct Reached {
  std::int64_t waypoint;
  double cost;
  double mm;
};

struct Limits {
  double cost;
  double mm;
};

// By what the answer says of them, the cheapest first.
std::vector<Reached> reachedWithin(const Limits& limits, const Ids& waypoints,
                                   const TernWalks::Row& walks) {
  std::vector<Reached> reached;
  for (std::size_t i = 0; i < waypoints.size(); ++i) {
    if (!walks[i] || !std::isfinite(walks[i]->cost)) continue;
    const Reached each{waypoints[i], shortestDouble(walks[i]->cost),
                       shortestDouble(walks[i]->millimetres)};
    if (each.cost <= limits.cost && each.mm <= limits.mm) reached.push_back(each);
  }
  std::ranges::stable_sort(reached, {}, &Reached::cost);
  return reached;
}

}  // namespace

Value answerMatrix(TernActiveVenue& venue, RequestFields& fields) {
  const Ids from = fields.integers("from");
  const Ids to = fields.integers("to");
  const std::int64_t level = fields.level();
  const std::size_t pairs = from.size() * to.size();
  if (pairs > mostPairs) {
    fields.refuse("\"from\" and \"to\" make " + std::to_string(pairs) + " pairs; at most " +
                  std::to_string(mostPairs) + " are answered at once");
  }
  if (fields.error()) return {};
  const Rows rows = walksBetween(venue, from, to, level);
  Value answer = answerOf("costs", tablePart(rows, &TernWalk::cost));
  answer.set("mmDistances", tablePart(rows, &TernWalk::millimetres));
  return answer;
}

Value answerReach(TernActiveVenue& venue, RequestFields& fields) {
  constexpr double unlimited = std::numeric_limits<double>::infinity();
  constexpr double mmPerMetre = 1000;
  const Ids from = fields.integerOrIntegers("from");
  const std::int64_t level = fields.level();
  const bool isByCost = fields.has("cost");
  const bool isByLength = fields.has("metres") || !isByCost;
  const Limits limits{isByCost ? fields.number("cost") : unlimited,
                      isByLength ? fields.number("metres") * mmPerMetre : unlimited};
  if (fields.error()) return {};
  const Ids waypoints = allWaypoints(*venue.globalASGrid());
  const TernWalks::Row walks = cheapestWalks(venue, from, waypoints, level);
  Value list = Value::list();
  for (const Reached& each : reachedWithin(limits, waypoints, walks)) {
    list.append(Value::map({{"waypoint", each.waypoint}, {"cost", each.cost}, {"mm", each.mm}}));
  }
  return answerOf("reached", std::move(list));
}

}  // namespace tern::detail
