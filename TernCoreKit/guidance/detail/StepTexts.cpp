#include "TernCoreKit/guidance/detail/StepTexts.hpp"

#include <algorithm>
#include <array>

#include "TernCoreKit/guidance/detail/Movers.hpp"
#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

namespace tern::inline v5::detail {

namespace {

constexpr std::array<std::string_view, 7> directionNames = {
    "left", "right", "slightLeft", "slightRight", "sharpLeft", "sharpRight", "around"};

template <class Collection>
const auto* recordAt(const Collection* collection, std::int64_t waypointId) {
  using Record = std::remove_cvref_t<decltype(*collection->each().begin())>;
  const Record* found = nullptr;
  if (collection == nullptr) return found;
  for (const Record& record : collection->each()) {
    const auto isHere = [&](const auto& waypoint) { return waypoint->id.integer() == waypointId; };
    if (record.name.text().empty() || std::ranges::none_of(record.waypoints, isHere)) continue;
    return &record;
  }
  return found;
}

std::string keyOf(std::string_view group, std::string_view name) {
  return std::string(group).append(".").append(name);
}

std::string floorText(const MapPlace& place) {
  if (place.floor == nullptr) return {};
  const std::string_view name = place.floor->name.text();
  return std::string(name.empty() ? place.floor->shortName.text() : name);
}

std::string buildingText(const MapPlace& place) {
  return place.building != nullptr ? std::string(place.building->name.text()) : std::string();
}

std::string venueText(const MapPlace& place) {
  const auto* venue = dynamic_cast<const TernActiveVenue*>(place.venue.get());
  return venue != nullptr ? std::string(venue->name.text()) : std::string();
}

// "Turn left at Coral Books"
std::string turnText(const PhraseBook& book, TernDirection direction,
                     const std::optional<SeenLandmark>& seen) {
  if (!seen) return book.text(keyOf("turn", directionName(direction)));
  if (!seen->isPassed) {
    return book.text(keyOf("turnAt", directionName(direction)),
                     {{"landmark", seen->landmark->name}});
  }
  const std::string passed = book.text(seen->isOnTheRight ? "seen.right" : "seen.left",
                                       {{"landmark", seen->landmark->name}});
  return book.text(keyOf("turnAfter", directionName(direction)), {{"landmark", passed}});
}

// With its building where that is another one.
std::string floorLedTo(const PhraseBook& book, const StepWords& words) {
  const std::string floor = floorText(words.to);
  const std::string building = buildingText(words.to);
  if (words.to.building == words.from.building || building.empty()) return floor;
  return floor.empty() ? building
                       : book.text("floorInBuilding", {{"floor", floor}, {"building", building}});
}

// -1 down, 1 up, 0 where that cannot be told.
int climb(const MapPlace& from, const MapPlace& to) {
  if (from.floor == nullptr || to.floor == nullptr) return 0;
  const std::int64_t before = from.floor->level.integer();
  const std::int64_t after = to.floor->level.integer();
  return after > before ? 1 : after < before ? -1 : 0;
}

std::string moverText(const PhraseBook& book, const StepWords& words) {
  const auto pathType = pathTypeOf(words.from, words.step.mover.value_or(0));
  const std::string group = keyOf("mover", moverName(moverKindOf(pathType.get())));
  std::string name(pathType != nullptr ? pathType->name.text() : "");
  if (name.empty()) name = book.text("passage");
  const std::string floor = floorLedTo(book, words);
  if (!words.step.toMapId || floor.empty())
    return book.text(keyOf(group, "here"), {{"mover", name}});
  const int up = climb(words.from, words.to);
  std::string key = keyOf(group, up > 0 ? "up" : up < 0 ? "down" : "to");
  if (!book.has(key)) key = keyOf(group, "to");
  return book.text(key, {{"mover", name}, {"floor", floor}});
}

std::string crossingText(const PhraseBook& book, const StepWords& words) {
  const std::string venue = venueText(words.to);
  if (words.to.venue != words.from.venue && !venue.empty()) {
    return book.text("crossing.venue", {{"venue", venue}});
  }
  const std::string building = buildingText(words.to);
  if (words.to.building != words.from.building && !building.empty()) {
    return book.text("crossing.building", {{"building", building}});
  }
  return book.text("crossing.floor", {{"floor", floorText(words.to)}});
}

std::string arrivalText(const PhraseBook& book, const StepWords& words) {
  using enum TernDirection;
  std::string_view side = "here";
  const auto direction = words.step.direction;
  if (direction == left || direction == slightLeft || direction == sharpLeft) side = "left";
  if (direction == right || direction == slightRight || direction == sharpRight) side = "right";
  return book.text(keyOf("arrive", side), {{"place", words.place}});
}

}  // namespace

std::string_view directionName(TernDirection direction) {
  return directionNames[static_cast<std::size_t>(direction)];
}

NamedPlace placeAt(const MapPlace& map, std::int64_t waypointId) {
  if (map.venue == nullptr) return {};
  if (const auto* found = recordAt(map.venue->destinations.get(), waypointId)) {
    return {found->id.integer(), std::string(found->name.text())};
  }
  if (const auto* found = recordAt(map.venue->amenities.get(), waypointId)) {
    return {std::nullopt, std::string(found->name.text())};
  }
  return {};
}

std::string placeText(const PhraseBook& book, const MapPlace& map, std::int64_t waypointId) {
  const bool hasWaypoints = map.map != nullptr && map.map->waypoints;
  const TernWaypoint* waypoint = hasWaypoints ? map.map->waypoints->findById(waypointId) : nullptr;
  const TernDestination* near =
      waypoint != nullptr ? destinationNear(*map.venue, *waypoint) : nullptr;
  if (near != nullptr) return book.text("near", {{"landmark", std::string(near->name.text())}});
  const std::string floor = floorText(map);
  return floor.empty() ? std::string() : book.text("onFloor", {{"floor", floor}});
}

std::string textOf(const PhraseBook& book, const StepWords& words) {
  using Kind = TernStep::Kind;
  const auto direction = words.step.direction;
  if (words.step.kind == Kind::arrive) return arrivalText(book, words);
  const std::string turn = direction ? turnText(book, *direction, words.seen) : std::string();
  if (words.step.kind == Kind::turn) return turn;
  if (words.step.kind == Kind::depart) {
    const std::string start = book.text("depart", {{"place", words.place}});
    return turn.empty() ? start : book.text("both", {{"first", start}, {"second", turn}});
  }
  const std::string text =
      words.step.kind == Kind::mover ? moverText(book, words) : crossingText(book, words);
  return turn.empty() ? text : book.text("both", {{"first", turn}, {"second", text}});
}

}  // namespace tern::detail
