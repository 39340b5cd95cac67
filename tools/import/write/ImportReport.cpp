#include "tools/import/write/ImportReport.hpp"

#include <array>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace tern::imports {

namespace {

// In the order of `LinkKind`.
struct KindWords {
  const char* key;
  std::string_view one;
  std::string_view many;
};
constexpr std::array<KindWords, linkKindCount> kindWords{{
    {"walkway", "walkway", "walkways"},
    {"ramp", "ramp", "ramps"},
    {"stairs", "flight of stairs", "flights of stairs"},
    {"escalator", "escalator", "escalators"},
    {"lift", "lift", "lifts"},
    {"stepFreeLift", "step-free lift", "step-free lifts"},
    {"movingWalkway", "moving walkway", "moving walkways"},
    {"gate", "gate", "gates"},
    {"unknown", "way of unknown kind", "ways of unknown kind"},
}};

template <class Number>
std::int64_t whole(Number number) {
  return static_cast<std::int64_t>(number);
}

Value venueReport(const WrittenVenue& venue) {
  Value kinds = Value::map();
  for (std::size_t i = 0; i < linkKindCount; ++i) kinds.set(kindWords[i].key, venue.kinds[i]);
  return Value::map({{"id", venue.id},
                     {"name", venue.name},
                     {"floors", whole(venue.floors)},
                     {"waypoints", whole(venue.waypoints)},
                     {"paths", whole(venue.paths)},
                     {"destinations", whole(venue.destinations)},
                     {"amenities", whole(venue.amenities)},
                     {"kinds", std::move(kinds)},
                     {"residual", venue.residual}});
}

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
  return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

std::string venueText(const WrittenVenue& venue) {
  std::string text = "Venue " + std::to_string(venue.id) + ", " + venue.name + ": ";
  text += counted(venue.floors, "floor", "floors") + ", " +
          counted(venue.waypoints, "waypoint", "waypoints") + ", " +
          counted(venue.paths, "path", "paths") + ", " +
          counted(venue.destinations, "destination", "destinations") + ", " +
          counted(venue.amenities, "kind of amenity", "kinds of amenities");
  std::string_view between = "\n  ";
  for (std::size_t i = 0; i < linkKindCount; ++i) {
    if (venue.kinds[i] == 0) continue;
    const auto count = static_cast<std::size_t>(venue.kinds[i]);
    text.append(between).append(counted(count, kindWords[i].one, kindWords[i].many));
    between = ", ";
  }
  return text + "\n";
}

// How often each kind of oddity is told of, in their order, with the sentence of the first.
struct Told {
  std::size_t count = 0;
  const Oddity* first = nullptr;
};

std::string linesByKind(const std::vector<const Oddity*>& oddities) {
  std::map<std::string_view, Told> kinds;
  for (const Oddity* const oddity : oddities) {
    Told& told = kinds[oddity->kind];
    if (told.count++ == 0) told.first = oddity;
  }
  std::string text;
  for (const auto& [kind, told] : kinds) {
    text += "  " + std::to_string(told.count) + " " + std::string(kind) + ", as " + told.first->id +
            ": " + told.first->why + "\n";
  }
  return text;
}

}  // namespace

Value reportOf(const WrittenVenues& written) {
  Value venues = Value::list();
  for (const WrittenVenue& venue : written.venues) venues.append(venueReport(venue));
  std::vector<Value> told;
  for (const Oddity& oddity : written.told) {
    told.push_back(Value::map({{"id", oddity.id},
                               {"kind", oddity.kind},
                               {"why", oddity.why},
                               {"cameThrough", oddity.cameThrough}}));
  }
  return Value::map({{"venues", std::move(venues)}, {"told", Value::listOf(told)}});
}

std::string reportText(const WrittenVenues& written) {
  std::string text;
  for (const WrittenVenue& venue : written.venues) text += venueText(venue);
  std::vector<const Oddity*> lost;
  std::vector<const Oddity*> odd;
  for (const Oddity& oddity : written.told) (oddity.cameThrough ? odd : lost).push_back(&oddity);
  if (lost.empty()) {
    text += "All of the source came through as it stands.\n";
  } else {
    text += counted(lost.size(), "record of the source did not come through as it stands:\n",
                    "records of the source did not come through as they stand:\n") +
            linesByKind(lost);
  }
  if (odd.empty()) return text;
  return text +
         counted(odd.size(), "record came through and looks odd:\n",
                 "records came through and look odd:\n") +
         linesByKind(odd);
}

}  // namespace tern::imports
