#include "tools/check/KnownIds.hpp"

namespace tern::check {

namespace {

Ids idsIn(const Value& owner, std::string_view key) {
  Ids ids;
  for (const Value& item : itemsOf(owner, key)) {
    if (item["id"].isNumber()) ids.insert(item["id"].integer());
  }
  return ids;
}

}  // namespace

KnownIds::KnownIds(const Subject& subject)
    : buildings(idsIn(subject.document, "buildings")),
      destinations(idsIn(subject.document, "destinations")),
      amenities(idsIn(subject.document, "amenities")),
      pathTypes(idsIn(subject.document, "pathTypes")) {
  forEachFloor(subject, [&](const Value&, const Value& floor) {
    if (floor["id"].isNumber()) floors.insert(floor["id"].integer());
  });
  forEachMap(subject, [&](const Value& map) { addMap(map); });
}

void KnownIds::addMap(const Value& map) {
  if (!map["id"].isNumber()) return;
  const std::int64_t id = map["id"].integer();
  Ids& waypoints = maps[id];
  for (const Value& waypoint : itemsOf(map, "waypoints")) {
    if (!waypoint["id"].isNumber()) continue;
    waypoints.insert(waypoint["id"].integer());
    mapOfWaypoint.try_emplace(waypoint["id"].integer(), id);
  }
}

}  // namespace tern::check
