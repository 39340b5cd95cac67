#include "tools/check/Finding.hpp"

#include <algorithm>

namespace tern::check {

namespace {

constexpr std::array<KindText, kindCount> texts{{
    {"island", "islands", "island", "join them to the rest with a path, or take them out"},
    {"oneWayTrap", "one-way traps", "one-way trap",
     "one gets in and not out again: add the way out, or mend a direction"},
    {"unreachable", "places that cannot be reached", "place that cannot be reached",
     "give them a waypoint that a path leads to"},
    {"floorWithoutMover", "floors without any mover", "floor without any mover",
     "add the stairs, lift or way that leads there"},
    {"moverToNowhere", "movers that lead nowhere", "mover that leads nowhere",
     "join the end to the ways of its floor, or name the place that is there"},
    {"danglingId", "dangling ids", "dangling id", "name a record that is there, or nothing"},
    {"repeatedId", "repeated ids", "repeated id",
     "give each record an id of its own: only one of them counts"},
    {"zeroLength", "links of no length", "link of no length",
     "move one of the ends, or make one waypoint of them"},
    {"longLink", "links through more than a floor's width",
     "link through more than a floor's width", "look at the coordinates of the ends"},
    {"throughWall", "links through walls", "link through a wall",
     "lead the path through a door, or draw the door"},
    {"missingScale", "maps without a scale", "map without a scale", "say \"mmPerPixel\""},
    {"missingLevel", "floors without a level", "floor without a level",
     "say \"level\", a whole number"},
    {"missingName", "missing names", "missing name", "say \"name\""},
    {"repeatedName", "names twice on one floor", "name twice on one floor",
     "make one place of them, or tell them apart by name"},
    {"placement", "places on the globe that do not fit", "place on the globe that does not fit",
     "mend \"coordinates\" or \"mmPerPixel\""},
    {"notStepFree", "places that are not step-free", "place that is not step-free",
     "no failure: only paths above accessibility level 0 lead there"},
}};

constexpr std::size_t namedAtMost = 3;

}  // namespace

const KindText& textOf(Kind kind) { return texts[static_cast<std::size_t>(kind)]; }

std::string listedIds(std::string_view record, const std::vector<std::int64_t>& ids) {
  std::string text(record);
  if (ids.size() > 1) {
    if (text.ends_with('y')) text.replace(text.size() - 1, 1, "ie");
    text += 's';
  }
  const std::size_t named = ids.size() > namedAtMost + 1 ? namedAtMost : ids.size();
  for (std::size_t i = 0; i < named; ++i) {
    text += (i == 0 ? " " : ", ") + std::to_string(ids[i]);
  }
  if (named < ids.size()) text += " and " + std::to_string(ids.size() - named) + " more";
  return text;
}

}  // namespace tern::check
