#include "tools/import/osm/OsmCodes.hpp"

#include <charconv>
#include <cmath>
#include <map>

namespace tern::imports {

namespace {

constexpr double usualDoorMetres = 0.9;
constexpr double steepPercent = 5;

bool isNo(std::string_view value) { return value.empty() || value == "no"; }

// The number that a text begins with, as "1.5 m" or "-6%".
std::optional<double> leadingNumber(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  int whole = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), whole);
  if (read.ec != std::errc() || whole < 0) return std::nullopt;
  double number = whole;
  const char* at = read.ptr;
  const char* const end = text.data() + text.size();
  if (at != end && *at == '.') {
    double part = 0.1;
    for (++at; at != end && *at >= '0' && *at <= '9'; ++at, part /= 10)
      number += (*at - '0') * part;
  }
  return isNegative ? -number : number;
}

bool isStairs(const OsmTags& tags) {
  return tags.is("stairs", "yes") || tags.isOneOf("room", {"stairs", "stairwell", "staircase"}) ||
         tags.is("indoor", "stairs") || tags.is("highway", "steps");
}

bool isLiftArea(const OsmTags& tags) {
  return tags.is("highway", "elevator") || tags.is("elevator", "yes") ||
         tags.isOneOf("room", {"elevator", "lift"}) || tags.is("indoor", "elevator");
}

// Stairs and lifts, moving stairs and ramps; walkway for all else.
LinkKind moverOf(const OsmTags& tags) {
  if (isLiftArea(tags)) return osmLiftMeaning(tags).link;
  const bool isMoved = !isNo(tags["conveying"]) || tags.is("room", "escalator") ||
                       tags.is("indoor", "escalator") || tags.is("escalator", "yes");
  if (isMoved) {
    const bool isFlat = tags.isOneOf("indoor", {"corridor", "area"}) && !isStairs(tags);
    return isFlat ? LinkKind::movingWalkway : LinkKind::escalator;
  }
  if (isStairs(tags)) return LinkKind::stairs;
  return tags.is("ramp", "yes") || tags.is("room", "ramp") ? LinkKind::ramp : LinkKind::walkway;
}

bool isToilets(const OsmTags& tags) {
  return tags.is("amenity", "toilets") ||
         tags.isOneOf("room", {"toilet", "toilets", "wc", "restroom", "bathroom"});
}

bool isShop(const OsmTags& tags) {
  const bool isEmpty = isNo(tags["shop"]) || tags.is("shop", "vacant");
  return !isEmpty || tags.isOneOf("room", {"shop", "restaurant"}) ||
         tags.isOneOf("amenity", {"restaurant", "fast_food", "cafe", "bar", "pub", "food_court",
                                  "ice_cream", "bank", "pharmacy", "post_office"});
}

bool isOutdoors(const OsmTags& tags) {
  return tags.isOneOf("amenity", {"parking", "bicycle_parking"}) ||
         tags.isOneOf("room", {"terrace", "balcony"}) || tags.is("leisure", "garden");
}

AreaKind drawnAs(const OsmTags& tags) {
  if (isToilets(tags)) return AreaKind::toilets;
  if (isOutdoors(tags)) return AreaKind::outdoors;
  if (isShop(tags)) return AreaKind::shop;
  const bool isWay = tags.isOneOf("indoor", {"corridor", "area"}) ||
                     tags.isOneOf("room", {"corridor", "hall", "lobby", "entrance"}) ||
                     tags.isOneOf("highway", {"footway", "pedestrian", "corridor"}) ||
                     tags.is("railway", "platform") || tags.is("public_transport", "platform");
  return isWay ? AreaKind::way : AreaKind::room;
}

bool isNamedArea(const OsmTags& tags) {
  return tags.isOneOf("indoor", {"room", "area", "corridor"}) || !isNo(tags["room"]) ||
         tags.is("stairs", "yes");
}

// Outlines that lie on a level without saying that they are indoors.
bool isPlaceOnLevel(const OsmTags& tags) {
  if (!tags.has("level") && !tags.has("repeat_on") && !tags.is("indoor", "yes")) return false;
  // The levels of a building are those that it has.
  if (tags.has("building") && !tags.is("building", "no")) return false;
  for (const char* const key : {"amenity", "shop", "office", "craft", "leisure", "tourism"}) {
    if (!isNo(tags[key])) return true;
  }
  return false;
}

}  // namespace

OsmAreaMeaning osmLiftMeaning(const OsmTags& tags) {
  const bool isStepFree = tags.isOneOf("wheelchair", {"yes", "designated"});
  return {AreaKind::mover, isStepFree ? LinkKind::stepFreeLift : LinkKind::lift};
}

bool isOsmBarred(const OsmTags& tags) {
  if (tags.isOneOf("foot", {"no", "private"})) return true;
  return !tags.has("foot") && tags.isOneOf("access", {"no", "private"});
}

bool isOsmGround(const OsmTags& tags) {
  for (const char* const key :
       {"level", "repeat_on", "indoor", "room", "building", "building:part"}) {
    if (tags.has(key)) return false;
  }
  if (isOsmOutline(tags)) {
    return tags.isOneOf("highway", {"footway", "pedestrian"}) && !isOsmBarred(tags);
  }
  return tags.is("shop", "mall") || tags.is("railway", "station") ||
         tags.isOneOf("amenity", {"hospital", "university", "college", "school", "marketplace",
                                  "exhibition_centre", "conference_centre"});
}

bool isOsmRoof(const OsmTags& tags) {
  return tags.is("building", "roof") || tags.is("building:part", "roof");
}

bool isOsmOutline(const OsmTags& tags) {
  return tags.is("railway", "platform") || tags.is("public_transport", "platform") ||
         (tags.is("area", "yes") &&
          tags.isOneOf("highway", {"footway", "pedestrian", "corridor", "steps", "elevator"}));
}

std::optional<OsmAreaMeaning> osmAreaMeaning(const OsmTags& tags) {
  const LinkKind mover = moverOf(tags);
  const bool isLift = isLiftArea(tags);
  if (!isNamedArea(tags) && !isPlaceOnLevel(tags) && !isOsmOutline(tags) && !isLift) {
    return std::nullopt;
  }
  OsmAreaMeaning meaning;
  meaning.link = mover;
  meaning.isWalked = !isOsmBarred(tags);
  meaning.drawn = mover == LinkKind::walkway ? drawnAs(tags) : AreaKind::mover;
  if (!meaning.isWalked) meaning.drawn = AreaKind::closed;
  const bool isOpen =
      tags.isOneOf("indoor", {"corridor", "area"}) || isOsmOutline(tags) || isOutdoors(tags);
  meaning.isWalled = !isOpen || mover != LinkKind::walkway;
  return meaning;
}

std::optional<OsmWalkMeaning> osmWalkMeaning(const OsmTags& tags) {
  const bool isWalked =
      tags.isOneOf("highway", {"footway", "corridor", "steps", "path", "pedestrian"}) ||
      tags.is("indoor", "corridor");
  if (!isWalked || isOsmBarred(tags)) return std::nullopt;
  OsmWalkMeaning meaning;
  const bool isSteps = tags.is("highway", "steps");
  const bool isMoved = !isNo(tags["conveying"]);
  if (isSteps) meaning.kind = isMoved ? LinkKind::escalator : LinkKind::stairs;
  if (!isSteps && isMoved) meaning.kind = LinkKind::movingWalkway;
  if (tags.is("conveying", "forward")) meaning.direction = Direction::forward;
  if (tags.is("conveying", "backward")) meaning.direction = Direction::backward;
  const std::string_view incline = tags["incline"];
  const auto slope = leadingNumber(incline);
  if (incline == "up" || (slope && *slope > 0)) meaning.rises = true;
  if (incline == "down" || (slope && *slope < 0)) meaning.rises = false;
  const bool isRamp = slope.value_or(0) != 0 || tags.is("ramp", "yes");
  if (meaning.kind == LinkKind::walkway && isRamp) meaning.kind = LinkKind::ramp;
  meaning.isSteep = std::abs(slope.value_or(0)) > steepPercent;
  // What a wheelchair cannot use has something in its way.
  meaning.hasSteps = meaning.kind != LinkKind::stairs && meaning.kind != LinkKind::escalator &&
                     tags.is("wheelchair", "no");
  return meaning;
}

Value osmDetails(const OsmTags& tags) {
  constexpr std::pair<const char*, const char*> keys[] = {
      {"width", "width"},       {"step_count", "steps"},     {"incline", "slope"},
      {"handrail", "handrail"}, {"surface", "surface"},      {"tactile_paving", "tactilePaving"},
      {"access", "access"},     {"wheelchair", "wheelchair"}};
  Value details = Value::map();
  for (const auto& [key, name] : keys) {
    if (tags.has(key)) details.set(name, std::string(tags[key]));
  }
  return details;
}

bool isOsmWall(const OsmTags& tags) {
  return tags.is("indoor", "wall") ||
         tags.isOneOf("barrier", {"wall", "fence", "handrail", "guard_rail", "glass"});
}

bool isOsmColumn(const OsmTags& tags) {
  return tags.isOneOf("indoor", {"column", "pillar"}) ||
         tags.isOneOf("building:part", {"column", "pillar"});
}

bool isOsmEntrance(const OsmTags& tags) {
  return !isNo(tags["entrance"]) || tags.is("railway", "subway_entrance");
}

bool isOsmDoor(const OsmTags& tags) {
  // door=no is an opening without a leaf.
  return tags.has("door") || isOsmEntrance(tags) || tags.is("indoor", "door");
}

bool isOsmLift(const OsmTags& tags) { return tags.is("highway", "elevator"); }

bool isOsmStep(const OsmTags& tags) {
  return tags.is("kerb", "raised") || tags.isOneOf("barrier", {"stile", "step"});
}

double osmDoorMetres(const OsmTags& tags) {
  const auto width = leadingNumber(tags.has("door:width") ? tags["door:width"] : tags["width"]);
  return width && *width >= 0.4 && *width <= 20 ? *width : usualDoorMetres;
}

Names osmNames(const OsmTags& tags) {
  constexpr std::string_view prefix = "name:";
  constexpr std::size_t mostOfCode = 3;
  Names names;
  if (tags.has("name")) names.push_back({"", std::string(tags["name"])});
  for (const auto& [key, value] : tags.all()) {
    if (!key.starts_with(prefix) || value.empty()) continue;
    const std::string language = key.substr(prefix.size());
    const std::string base = language.substr(0, language.find_first_of("-_"));
    const bool isLanguage =
        base.size() >= 2 && base.size() <= mostOfCode &&
        base.find_first_not_of("abcdefghijklmnopqrstuvwxyz") == std::string::npos;
    if (isLanguage) names.push_back({language, value});
  }
  if (names.empty() && tags.has("ref")) names.push_back({"", std::string(tags["ref"])});
  return names;
}

std::vector<std::string> osmKeywords(const OsmTags& tags) {
  const std::string_view number = tags["ref"];
  if (number.empty() || nameIn(osmNames(tags), "") == number) return {};
  return {std::string(number)};
}

std::string osmCategory(const OsmTags& tags) {
  static const std::map<std::string_view, std::string_view> known{
      {"toilets", "restroom"},      {"atm", "atm"},
      {"fast_food", "foodservice"}, {"food_court", "foodservice"},
      {"cafe", "foodservice"},      {"bar", "foodservice"},
      {"pub", "foodservice"},       {"vending_machine", "vendingmachine"}};
  if (isToilets(tags)) return "restroom";
  if (const auto amenity = tags["amenity"]; !isNo(amenity)) {
    const auto word = known.find(amenity);
    return std::string(word != known.end() ? word->second : amenity);
  }
  if (!isNo(tags["shop"])) return tags.is("shop", "vacant") ? "" : "shopping";
  if (tags.is("tourism", "information")) return "information";
  if (tags.is("emergency", "defibrillator")) return "defibrillator";
  if (!isNo(tags["office"])) return "office";
  for (const char* const key : {"tourism", "leisure", "craft", "healthcare"}) {
    if (!isNo(tags[key]) && !tags.is(key, "yes")) return std::string(tags[key]);
  }
  if (tags.is("railway", "platform") || tags.is("public_transport", "platform")) return "platform";
  if (isOsmEntrance(tags)) return "entry";
  if (const auto room = tags["room"]; !isNo(room) && room != "yes") {
    return room == "shop" ? "shopping" : std::string(room);
  }
  if (tags.is("indoor", "room") || tags.is("indoor", "area")) return "room";
  return tags.is("indoor", "corridor") ? "walkway" : "";
}

bool isOsmToiletsForWheelchairs(const OsmTags& tags) {
  const char* const key = tags.has("toilets:wheelchair") ? "toilets:wheelchair" : "wheelchair";
  return tags.isOneOf(key, {"yes", "designated"});
}

bool isOsmFacility(std::string_view category) {
  constexpr std::string_view facilities[] = {
      "restroom",       "atm",           "information",    "vendingmachine",
      "drinking_water", "lockers",       "luggage_locker", "telephone",
      "defibrillator",  "baby_changing", "photo_booth",    "charging_station",
      "waste_basket",   "bench",         "shower"};
  return std::ranges::find(facilities, category) != std::end(facilities);
}

}  // namespace tern::imports
