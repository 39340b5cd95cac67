#include <map>
#include <string>
#include <unordered_map>

#include "tools/check/Checks.hpp"

namespace tern::check {

namespace {

// How often each id of one kind of record was seen.
class Seen {
 public:
  Seen(std::string_view record, Findings& findings) : record_(record), findings_(findings) {}

  // `map` is where the record lies, absent when it lies on none.
  void add(const Value& item, const Value& map = {}) {
    const Value& id = item["id"];
    if (id.isNumber() && ++counts_[id.integer()] == 2) tell(id.integer(), map);
  }

 private:
  void tell(std::int64_t id, const Value& map) {
    Finding finding{Kind::repeatedId, {id}, {}, {}};
    if (map.isNumber()) finding.map = map.integer();
    finding.message = record_ + " " + std::to_string(id) + " is there more than once";
    findings_.push_back(std::move(finding));
  }

  const std::string record_;
  Findings& findings_;
  std::unordered_map<std::int64_t, int> counts_;
};

void checkBatch(const Value& owner, std::string_view key, std::string_view record,
                Findings& findings) {
  Seen seen(record, findings);
  for (const Value& item : itemsOf(owner, key)) seen.add(item);
}

// A path that joins two maps may be listed with both of them: it is one path all the same.
class PathCheck {
 public:
  explicit PathCheck(Findings& findings) : seen_("path", findings) {}

  void add(const Value& map) {
    for (const Value& path : itemsOf(map, "paths")) {
      const auto [first, isNew] = firsts_.try_emplace(path["id"].integer(), Place{&path, &map});
      if (isNew || first->second.map == &map || !areOne(*first->second.path, path)) {
        seen_.add(path, map["id"]);
      }
    }
  }

 private:
  struct Place {
    const Value* path;
    const Value* map;
  };

  static bool areOne(const Value& a, const Value& b) {
    return a["waypointIds"] == b["waypointIds"] && a["pathTypeId"] == b["pathTypeId"];
  }

  Seen seen_;
  std::unordered_map<std::int64_t, Place> firsts_;
};

}  // namespace

void checkRepeats(const Subject& subject, Findings& findings) {
  checkBatch(subject.document, "buildings", "building", findings);
  checkBatch(subject.document, "destinations", "destination", findings);
  checkBatch(subject.document, "amenities", "amenity", findings);
  checkBatch(subject.document, "pathTypes", "path type", findings);
  checkBatch(subject.document, "mapLabels", "map label", findings);
  Seen floors("floor", findings);
  forEachFloor(subject, [&](const Value&, const Value& floor) { floors.add(floor); });
  Seen maps("map", findings);
  Seen waypoints("waypoint", findings);
  PathCheck paths(findings);
  forEachMap(subject, [&](const Value& map) {
    maps.add(map, map["id"]);
    for (const Value& waypoint : itemsOf(map, "waypoints")) waypoints.add(waypoint, map["id"]);
    paths.add(map);
  });
}

}  // namespace tern::check
