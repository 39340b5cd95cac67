#include "tests/guidance/Follower.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <utility>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/guidance/Bearings.hpp"

namespace tern::test {

namespace {

using Kind = TernStep::Kind;

constexpr std::int64_t walking = 1;
// What they have behind them when they say where straight on is. Metres.
constexpr double remembered = 5;
// How far they look along a way. Metres.
constexpr double glance = 6;
// What leads nowhere within this is a door. Metres.
constexpr double stub = 3;
// How far beside the way they see a lift, a door or a goal. Metres.
constexpr double aside = 4;
constexpr double inSight = 12;
// Where they still look for what is told, and how well they can tell metres.
constexpr double aboutAsWell = 1;
double tolerance(double metres) { return 3 + 0.15 * metres; }
double blur(double metres) { return 1 + 0.05 * metres; }

struct Sector {
  double from;
  double to;
};
Sector sectorOf(TernDirection direction) {
  using enum TernDirection;
  switch (direction) {
    case slightLeft:
    case slightRight:
      return {10, 60};
    case left:
    case right:
      return {60, 120};
    case sharpLeft:
    case sharpRight:
      return {120, 160};
    case around:
      break;
  }
  return {160, 180};
}

// How badly a turn of that many degrees fits a direction; none where it is another one.
std::optional<double> misfitOf(TernDirection direction, double turn) {
  const int side = sideOf(direction);
  const double sure = side == 0 ? std::abs(turn) : side * turn;
  const auto [from, to] = sectorOf(direction);
  const double middle = (from + to) / 2;
  const double outside = std::max({from - sure, sure - to, 0.0});
  if (outside > 35) return std::nullopt;
  return outside / 15 + std::min(1.0, std::abs(sure - middle) / 30) * 0.25;
}

TernCoordinate between(TernCoordinate a, TernCoordinate b, double share) {
  return {a.x + share * (b.x - a.x), a.y + share * (b.y - a.y)};
}

// The way from the point some metres back on a trail to its end.
std::optional<TernCoordinate> headingOf(const std::vector<TernCoordinate>& trail) {
  double left = remembered;
  for (std::size_t i = trail.size(); i-- > 1;) {
    const double length = lengthOf(wayTo(trail[i - 1], trail[i]));
    if (length >= left) return wayTo(between(trail[i], trail[i - 1], left / length), trail.back());
    left -= length;
  }
  if (trail.empty() || left == remembered) return std::nullopt;
  return wayTo(trail.front(), trail.back());
}

}  // namespace

std::vector<ToldStep> toldSteps(const std::vector<TernStep>& steps) {
  std::vector<ToldStep> told;
  for (const TernStep& step : steps) {
    told.push_back({step.kind, step.direction, step.mm / 1000, step.mover, step.toMapId,
                    step.landmark ? std::optional(step.landmark->id) : std::nullopt});
  }
  return told;
}

Follower::Follower(const TernActiveVenue& venue) : venue_(venue) {
  const auto grid = venue.globalASGrid();
  std::map<std::int64_t, std::size_t> places;
  const auto scaleOf = [&](std::int64_t mapId) {
    return venue.maps->getById(mapId)->mmPerPixel.number() / 1000;
  };
  const auto nodes = grid->nodes();
  for (const TernASNode& node : nodes) {
    if (!places.try_emplace(node.nodeId(), spots_.size()).second) continue;
    const double scale = scaleOf(node.mapId());
    spots_.push_back({node.nodeId(), node.mapId(), {node.x() * scale, node.y() * scale}, {}});
  }
  for (Spot& spot : spots_) {
    for (const TernNeighbor& neighbor : grid->getNodeById(spot.id)->neighbors()) {
      const auto to = places.find(neighbor.neighborId.integer());
      if (to == places.end()) continue;
      spot.ways.push_back({to->second, neighbor.edgeTypeId.integer(),
                           neighbor.distance * scaleOf(spots_[to->second].mapId)});
    }
  }
}

double Follower::metresApart(std::int64_t a, std::int64_t b) const {
  const auto first = std::ranges::find(spots_, a, &Spot::id);
  const auto second = std::ranges::find(spots_, b, &Spot::id);
  if (first == spots_.end() || second == spots_.end() || first->mapId != second->mapId) {
    return std::numeric_limits<double>::infinity();
  }
  return lengthOf(wayTo(first->at, second->at));
}

std::ptrdiff_t Follower::waysFrom(std::int64_t id) const {
  const auto spot = std::ranges::find(spots_, id, &Spot::id);
  return spot != spots_.end() ? std::ranges::count(spot->ways, walking, &Way::type) : 0;
}

bool Follower::isOnFoot(const Spot& from, const Way& way) const {
  return way.type == walking && spots_[way.to].mapId == from.mapId;
}

// Along the shortest ways to all that lies within the length behind a first link.
void Follower::look(const Person& person, const Way& first, double length,
                    std::vector<Glance>& seen) const {
  std::vector<Glance> open{
      {{first.to}, lengthOf(wayTo(spots_[person.spot].at, spots_[first.to].at)), {}, false}};
  std::set<std::size_t> known{person.spot};
  if (person.from) known.insert(*person.from);
  while (!open.empty()) {
    const auto nearest = std::ranges::min_element(open, {}, &Glance::length);
    Glance sofar = std::move(*nearest);
    open.erase(nearest);
    const std::size_t at = sofar.spots.back();
    if (!known.insert(at).second) continue;
    const std::size_t before = sofar.spots.size() > 1 ? sofar.spots.end()[-2] : person.spot;
    const double over = sofar.length - length;
    if (over >= 0) {
      const double link = lengthOf(wayTo(spots_[before].at, spots_[at].at));
      sofar.end = link > 0 ? between(spots_[at].at, spots_[before].at, over / link) : spots_[at].at;
      seen.push_back(std::move(sofar));
      continue;
    }
    bool isDeadEnd = true;
    for (const Way& way : spots_[at].ways) {
      if (!isOnFoot(spots_[at], way) || way.to == person.spot || way.to == person.from ||
          way.to == before) {
        continue;
      }
      isDeadEnd = false;
      Glance further = sofar;
      further.spots.push_back(way.to);
      further.length += lengthOf(wayTo(spots_[at].at, spots_[way.to].at));
      open.push_back(std::move(further));
    }
    if (!isDeadEnd) continue;
    sofar.end = spots_[at].at;
    sofar.isDeadEnd = true;
    seen.push_back(std::move(sofar));
  }
}

std::vector<Follower::Glance> Follower::glances(const Person& person, double length) const {
  std::vector<Glance> seen;
  for (const Way& way : spots_[person.spot].ways) {
    if (isOnFoot(spots_[person.spot], way) && way.to != person.from && way.to != person.spot) {
      look(person, way, length, seen);
    }
  }
  return seen;
}

// The way that leads straightest on; one that ends at once only where there is no other.
std::optional<std::size_t> Follower::straightOn(const Person& person) const {
  const auto heading = headingOf(person.trail);
  std::optional<std::size_t> best;
  double least = std::numeric_limits<double>::infinity();
  for (const Glance& way : glances(person, glance)) {
    const TernCoordinate ahead = wayTo(spots_[person.spot].at, way.end);
    double bend = heading ? std::abs(degrees(*heading, ahead)) : 0;
    if (way.isDeadEnd && way.length < stub) bend += 360;
    if (bend < least) {
      least = bend;
      best = way.spots.front();
    }
  }
  return best;
}

Follower::Person Follower::moved(const Person& person, std::size_t to) const {
  Person there = person;
  const Spot& here = spots_[person.spot];
  double metres = std::numeric_limits<double>::infinity();
  for (const Way& way : here.ways) {
    if (way.to == to && way.type == walking) metres = std::min(metres, way.metres);
  }
  there.walked += metres;
  there.from = person.spot;
  there.spot = to;
  if (here.mapId != spots_[to].mapId) there.trail.clear();
  there.trail.push_back(spots_[to].at);
  if (!there.ahead.empty()) there.ahead.erase(there.ahead.begin());
  return there;
}

// Where they come when they go straight on; along every way where they face none.
std::vector<std::vector<Follower::Person>> Follower::walks(const Person& person,
                                                           double until) const {
  std::vector<std::vector<Person>> all;
  if (!person.ahead.empty() || headingOf(person.trail)) {
    all.push_back({person});
  } else {
    all.push_back({person});
    for (const Way& way : spots_[person.spot].ways) {
      if (isOnFoot(spots_[person.spot], way)) all.push_back({person, moved(person, way.to)});
    }
  }
  for (std::size_t w = 0; w < all.size(); ++w) {
    auto& walk = all[w];
    if (w == 0 && all.size() > 1) continue;
    while (walk.back().walked <= until) {
      const Person& here = walk.back();
      const auto next = here.ahead.empty() ? straightOn(here) : std::optional(here.ahead.front());
      if (!next || std::ranges::find(walk, *next, &Person::spot) != walk.end()) break;
      walk.push_back(moved(here, *next));
    }
  }
  return all;
}

// The spots beside the way, with the one they stand on.
std::vector<Follower::Near> Follower::nearTo(const Person& person, double within) const {
  std::vector<Near> found{{person.spot, person.from, 0, 0, std::nullopt}};
  std::set<std::size_t> seen{person.spot};
  if (person.from) seen.insert(*person.from);
  for (std::size_t i = 0; i < found.size(); ++i) {
    const Near here = found[i];
    for (const Way& way : spots_[here.spot].ways) {
      const double drawn =
          here.drawn + (isOnFoot(spots_[here.spot], way)
                            ? lengthOf(wayTo(spots_[here.spot].at, spots_[way.to].at))
                            : 0);
      if (way.type != walking || drawn > within || !seen.insert(way.to).second) continue;
      found.push_back(
          {way.to, here.spot, here.metres + way.metres, drawn, here.first ? here.first : way.to});
    }
  }
  return found;
}

// The ways that fit a turn about as well as the one that fits best, that one first.
std::vector<Follower::Person> Follower::turned(const std::vector<Person>& walk,
                                               TernDirection direction, double metres,
                                               double next) const {
  std::vector<Person> fitting;
  for (const Person& here : walk) {
    if (std::abs(here.walked - metres) > tolerance(metres)) continue;
    const auto heading = headingOf(here.trail);
    if (!heading) continue;
    Person looking = here;
    if (direction == TernDirection::around) looking.from.reset();
    std::map<std::vector<std::size_t>, Person> byWay;
    for (const Glance& way : glances(looking, std::clamp(next, 3.0, 8.0))) {
      const TernCoordinate at = spots_[here.spot].at;
      const TernCoordinate ahead = wayTo(at, way.end);
      const TernCoordinate corner = way.spots.size() > 1 ? spots_[way.spots.end()[-2]].at : at;
      const auto begun = misfitOf(direction, degrees(*heading, ahead));
      const auto rounded = misfitOf(direction, degrees(*heading, wayTo(corner, way.end)));
      if ((!begun && !rounded) || lengthOf(ahead) == 0) continue;
      const bool isCut = !begun || (rounded && *rounded + 0.25 < *begun);
      const double fit = isCut ? *rounded + 0.25 : *begun;
      if (way.isDeadEnd && way.length + aside < next) continue;
      auto chosen = way.spots;
      if (!isCut) chosen.resize(1);
      const double misfit = here.misfit + fit + std::abs(here.walked - metres) / blur(metres);
      const auto [known, isNew] = byWay.try_emplace(chosen, here);
      if (!isNew && known->second.misfit <= misfit) continue;
      Person& there = known->second;
      there.misfit = misfit;
      there.ahead = chosen;
      const double back = remembered / lengthOf(ahead);
      there.trail = {{at.x - back * ahead.x, at.y - back * ahead.y}, at};
    }
    for (auto& [way, there] : byWay) fitting.push_back(std::move(there));
  }
  std::ranges::sort(fitting, {}, &Person::misfit);
  const auto tooMany = std::ranges::find_if(fitting, [&](const Person& there) {
    return there.misfit > fitting.front().misfit + aboutAsWell;
  });
  fitting.erase(tooMany, fitting.end());
  return fitting;
}

template <class Found>
std::optional<std::pair<Follower::Person, Follower::Near>> Follower::reached(
    const std::vector<Person>& walk, const ToldStep& told, double metres, Found found) const {
  std::optional<std::pair<Person, Near>> best;
  double least = std::numeric_limits<double>::infinity();
  for (const Person& here : walk) {
    for (const Near& near : nearTo(here, told.kind == Kind::arrive ? aside : inSight)) {
      const double off = std::abs(here.walked + near.metres - metres);
      if (off > tolerance(metres) || !found(near.spot)) continue;
      double misfit = off / blur(metres) + near.drawn / 10;
      const int side = sideOf(told.direction);
      const auto heading = headingOf(here.trail);
      if (told.kind == Kind::arrive && side != 0 && !near.first) misfit += 1;
      if (near.first && side != 0 && heading) {
        const double turn = degrees(*heading, wayTo(spots_[here.spot].at, spots_[*near.first].at));
        if (told.kind == Kind::arrive) {
          misfit += misfitOf(*told.direction, turn).value_or(1);
        } else if (side * turn < 0) {
          misfit += 1;
        }
      }
      if (misfit >= least) continue;
      least = misfit;
      best = {here, near};
      best->first.misfit += misfit;
    }
  }
  return best;
}

// Along a mover, from the end of its first link, to the floor that is told; else to where it ends.
// Landings are part of it.
std::vector<Follower::Person> Follower::ridden(const Person& entry, const Way& first,
                                               const ToldStep& told) const {
  struct Rider {
    Person at;
    double landing = 0;
  };
  const auto along = [&](const Person& here, const Way& way) {
    Person there = here;
    there.walked += way.metres;
    there.from = here.spot;
    there.spot = way.to;
    if (spots_[here.spot].mapId != spots_[way.to].mapId) there.trail.clear();
    there.trail.push_back(spots_[way.to].at);
    return there;
  };
  std::vector<Person> out;
  std::vector<Rider> open{{along(entry, first), 0}};
  std::set<std::size_t> seen{entry.spot, first.to};
  for (std::size_t i = 0; i < open.size(); ++i) {
    const Rider rider = open[i];
    const Spot& here = spots_[rider.at.spot];
    const bool isThere = told.toMapId && here.mapId == *told.toMapId;
    bool goesOn = false;
    for (const Way& way : here.ways) {
      const bool isRide = way.type == told.mover;
      const double drawn = lengthOf(wayTo(here.at, spots_[way.to].at));
      const bool isLanding =
          way.type == walking && isOnFoot(here, way) && !isThere && rider.landing + drawn < aside;
      if (!isRide && !isLanding) continue;
      if (isThere && spots_[way.to].mapId != *told.toMapId) continue;
      if (!seen.insert(way.to).second) continue;
      goesOn = goesOn || isRide;
      open.push_back({along(rider.at, way), isRide ? 0 : rider.landing + drawn});
    }
    const bool canLeave =
        std::ranges::any_of(here.ways, [](const Way& way) { return way.type == walking; });
    if (rider.landing == 0 && (told.toMapId ? isThere : true) && (canLeave || !goesOn) &&
        rider.at.walked <= told.metres + tolerance(told.metres)) {
      out.push_back(rider.at);
      if (goesOn) out.back().misfit += told.toMapId ? 0.2 : 0.5;
    }
  }
  return out;
}

// Into what is taken, which a turn may be told with.
std::vector<Follower::Person> Follower::taken(const Person& person, const Near& near,
                                              const ToldStep& told) const {
  Person entry = person;
  entry.spot = near.spot;
  entry.from = near.from;
  entry.walked = 0;
  entry.ahead.clear();
  entry.trail = {spots_[entry.spot].at};
  const auto heading = headingOf(person.trail);
  std::vector<Person> all;
  for (const Way& way : spots_[near.spot].ways) {
    if (way.type != told.mover) continue;
    double misfit = 0;
    if (heading && spots_[way.to].mapId == spots_[person.spot].mapId) {
      const double turn = degrees(*heading, wayTo(spots_[near.spot].at, spots_[way.to].at));
      misfit = told.direction ? misfitOf(*told.direction, turn).value_or(2) : std::abs(turn) / 90;
    }
    for (Person& there : ridden(entry, way, told)) {
      there.misfit += misfit;
      all.push_back(std::move(there));
    }
  }
  return all;
}

bool Follower::isGoal(std::size_t spot, const ToldStep& told) const {
  if (!told.destination) return true;
  const auto destination = venue_.destinations->getById(*told.destination);
  return destination != nullptr && std::ranges::any_of(destination->waypoints, [&](const auto& d) {
           return d->id.integer() == spots_[spot].id;
         });
}

std::vector<Follower::Person> Follower::done(const std::vector<Person>& walk, const ToldStep& told,
                                             double metres) const {
  switch (told.kind) {
    case Kind::depart:
      return {};
    case Kind::turn: {
      if (!told.direction) return {};
      auto all = turned(walk, *told.direction, metres, told.metres);
      for (Person& there : all) there.walked = 0;
      return all;
    }
    case Kind::arrive: {
      const auto there =
          reached(walk, told, metres, [&](std::size_t spot) { return isGoal(spot, told); });
      if (!there) return {};
      Person end = there->first;
      end.spot = there->second.spot;
      return {end};
    }
    case Kind::mover: {
      const auto there = reached(walk, told, metres, [&](std::size_t spot) {
        Person entering;
        entering.spot = spot;
        return std::ranges::any_of(spots_[spot].ways, [&](const Way& way) {
          return way.type == told.mover && !ridden(entering, way, told).empty();
        });
      });
      if (!there) return {};
      return taken(there->first, there->second, told);
    }
    case Kind::crossing: {
      const auto leads = [&](const Way& way) {
        return way.type == walking && spots_[way.to].mapId == told.toMapId;
      };
      const auto there = reached(walk, told, metres, [&](std::size_t spot) {
        return std::ranges::any_of(spots_[spot].ways, leads);
      });
      if (!there) return {};
      std::vector<Person> beyond;
      for (const Way& way : spots_[there->second.spot].ways) {
        if (!leads(way)) continue;
        Person across = there->first;
        across.spot = way.to;
        across.from = there->second.spot;
        across.walked = way.metres;
        across.ahead.clear();
        across.trail = {spots_[way.to].at};
        beyond.push_back(across);
        if (!told.direction) continue;
        for (const auto& on : walks(across, across.walked + 3)) {
          std::ranges::copy(turned(on, *told.direction, across.walked + 1, 3),
                            std::back_inserter(beyond));
        }
      }
      return beyond;
    }
  }
  return {};
}

// Out of the door, with the turn that is told right there.
std::vector<Follower::Person> Follower::started(std::size_t spot, const ToldStep& told) const {
  Person person;
  person.spot = spot;
  person.trail = {spots_[spot].at};
  if (!told.direction) return {person};
  std::vector<Person> all;
  for (const auto& walk : walks(person, 3)) {
    std::ranges::copy(turned(walk, *told.direction, 1, told.metres), std::back_inserter(all));
  }
  return all;
}

std::optional<std::int64_t> Follower::endOf(std::int64_t start,
                                            const std::vector<ToldStep>& steps) const {
  constexpr std::size_t tried = 24;
  const auto first = std::ranges::find(spots_, start, &Spot::id);
  if (first == spots_.end() || steps.empty()) return std::nullopt;
  std::vector<Person> people =
      started(static_cast<std::size_t>(first - spots_.begin()), steps.front());
  for (std::size_t s = 0; s + 1 < steps.size(); ++s) {
    const double metres = steps[s].metres;
    std::vector<Person> next;
    for (const Person& person : people) {
      for (const auto& walk : walks(person, metres + tolerance(metres))) {
        for (Person& there : done(walk, steps[s + 1], metres)) next.push_back(std::move(there));
      }
    }
    std::ranges::sort(next, {}, &Person::misfit);
    people.clear();
    for (Person& person : next) {
      const auto isSame = [&](const Person& other) {
        return other.spot == person.spot && other.from == person.from &&
               other.ahead == person.ahead;
      };
      if (people.size() < tried && std::ranges::none_of(people, isSame)) {
        people.push_back(std::move(person));
      }
    }
  }
  if (people.empty()) return std::nullopt;
  return spots_[people.front().spot].id;
}

}  // namespace tern::test
