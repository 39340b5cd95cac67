#include "tools/import/osm/OsmSelection.hpp"

#include <cmath>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "tools/import/osm/OsmLevels.hpp"

namespace tern::imports {

namespace {

bool isAboutIndoors(const OsmTags& tags) {
  return tags.has("indoor") || tags.has("level") || tags.has("repeat_on") || tags.has("room");
}

bool isOfLevel(const OsmTags& tags) { return tags.is("indoor", "level"); }

bool isOfBuilding(const OsmTags& tags) {
  return (tags.has("building") && !tags.is("building", "no")) ||
         (tags.has("building:part") && !tags.is("building:part", "no"));
}

bool isWholeNumber(std::string_view text) {
  return !osmLevels(text).levels.empty() && osmLevels(text).unread.empty();
}

// From its lowest level to its highest one, where both are stated.
std::vector<double> levelsOfBuilding(const OsmTags& tags) {
  if (tags.has("level")) return osmLevels(tags).levels;
  const auto stated = [&](std::string_view key) -> std::optional<double> {
    return isWholeNumber(tags[key]) ? std::optional(osmLevels(tags[key]).levels.front())
                                    : std::nullopt;
  };
  auto low = stated("min_level");
  auto high = stated("max_level");
  if (!low) low = stated("building:min_level");
  if (!high) {
    if (const auto count = stated("building:levels")) high = *count - 1;
  }
  const double below = stated("building:levels:underground").value_or(0);
  if (!low && high) low = -below;
  std::vector<double> levels;
  if (!low || !high || *high - *low > mostLevel) return levels;
  for (double level = *low; level <= *high; ++level) levels.push_back(level);
  return levels;
}

// The nodes of a way that ends where it begins, each once.
std::optional<OsmRing> closedRing(const OsmWay& way) {
  constexpr std::size_t leastOfRing = 4;
  if (way.refs.size() < leastOfRing || way.refs.front() != way.refs.back()) return std::nullopt;
  return OsmRing(way.refs.begin(), way.refs.end() - 1);
}

class Selector {
 public:
  Selector(const OsmData& data, Oddities& oddities) : data_(data), oddities_(oddities) {
    for (const OsmWay& way : data.ways) ways_.emplace(way.id, &way);
    const auto look = [this](const auto& records) {
      for (const auto& record : records) {
        saysLevels_ = saysLevels_ || record.tags.has("level") || record.tags.has("repeat_on");
      }
    };
    look(data.nodes);
    look(data.ways);
    look(data.relations);
  }

  OsmSelection select() {
    for (const OsmRelation& relation : data_.relations) addRelation(relation);
    for (const OsmWay& way : data_.ways) addWay(way);
    for (const OsmNode& node : data_.nodes) addNode(node);
    return std::move(found_);
  }

 private:
  // Told of where part of what it says is no level; empty where it says none. Where nothing indoors
  // says any, all of it lies on the ground.
  std::vector<double> levelsOf(const std::string& record, const OsmTags& tags) {
    if (!saysLevels_ && isAboutIndoors(tags)) {
      oddities_.remark("level 0", "noLevels",
                       "No record says a level; all that is indoors is taken to lie on this one.");
      return {0};
    }
    OsmLevels read = osmLevels(tags);
    if (!read.unread.empty()) {
      oddities_.tell(record, "noFloor", "This of its levels cannot be read: " + read.unread + ".");
    }
    return std::move(read.levels);
  }

  void addRelation(const OsmRelation& relation) {
    const std::string record = osmId(OsmKind::relation, relation.id);
    if (!relation.tags.is("type", "multipolygon")) {
      if (isAboutIndoors(relation.tags)) {
        oddities_.tell(record, "notRead", "Of relations only multipolygons are read.");
      } else {
        ++found_.others;
      }
      return;
    }
    const OsmTags* const tags = tagsOf(relation);
    if (tags == nullptr) {
      ++found_.others;
      return;
    }
    OsmOutline outline{record, tags, {}, {}, {}};
    outline.outer = ringsOf(relation, record, false);
    outline.inner = ringsOf(relation, record, true);
    addOutline(std::move(outline));
  }

  // Its own or, as was once done, those of its only outer way, which is then no area of its own.
  const OsmTags* tagsOf(const OsmRelation& relation) {
    if (isOutline(relation.tags)) return &relation.tags;
    const OsmWay* only = nullptr;
    for (const OsmMember& member : relation.members) {
      if (member.role == "inner" || member.kind != OsmKind::way) continue;
      const auto way = ways_.find(member.ref);
      if (way == ways_.end() || only != nullptr) return nullptr;
      only = way->second;
    }
    if (only == nullptr || !isOutline(only->tags)) return nullptr;
    taken_.insert(only->id);
    return &only->tags;
  }

  static bool isOutline(const OsmTags& tags) {
    return osmAreaMeaning(tags) || isOsmColumn(tags) || isOfLevel(tags) || isOfBuilding(tags) ||
           isOsmGround(tags);
  }

  std::vector<OsmRing> ringsOf(const OsmRelation& relation, const std::string& record,
                               bool isInner) {
    std::vector<const std::vector<std::int64_t>*> parts;
    for (const OsmMember& member : relation.members) {
      if (member.kind != OsmKind::way || (member.role == "inner") != isInner) continue;
      const auto way = ways_.find(member.ref);
      if (way == ways_.end()) {
        oddities_.tell(record, "dangling", "One of its ways is not there.");
      } else {
        parts.push_back(&way->second->refs);
      }
    }
    OsmRings made = osmRings(parts);
    if (made.loose > 0) {
      oddities_.tell(record, "notClosed", "Some of its ways close to no ring.");
    }
    return std::move(made.rings);
  }

  void addOutline(OsmOutline outline) {
    const OsmTags& tags = *outline.tags;
    if (outline.outer.empty()) {
      oddities_.tell(outline.record, "noShape", "It encloses nothing.");
      return;
    }
    if (isOsmGround(tags)) {
      found_.grounds.push_back(std::move(outline));
      return;
    }
    const auto meaning = osmAreaMeaning(tags);
    if (!meaning && !isOfLevel(tags) && !isOsmColumn(tags)) {
      outline.levels = levelsOfBuilding(tags);
      found_.buildings.push_back(std::move(outline));
      return;
    }
    outline.levels = levelsOf(outline.record, tags);
    if (outline.levels.empty()) {
      tellWithoutLevel(outline.record, tags);
    } else if (meaning) {
      if (!meaning->isWalked) tellBarred(outline.record);
      found_.areas.push_back(std::move(outline));
    } else {
      (isOfLevel(tags) ? found_.levels : found_.columns).push_back(std::move(outline));
    }
  }

  void tellBarred(const std::string& record) {
    oddities_.tell(record, "noAccess", "It is closed to the public: nobody is led there.");
  }

  void tellWithoutLevel(const std::string& record, const OsmTags& tags) {
    if (isAboutIndoors(tags)) {
      oddities_.tell(record, "noFloor", "It does not say on which level it lies.");
    } else {
      ++found_.others;
    }
  }

  void addWay(const OsmWay& way) {
    if (taken_.contains(way.id) || way.tags.isEmpty()) return;
    const std::string record = osmId(OsmKind::way, way.id);
    auto ring = closedRing(way);
    const bool isArea = ring && (isOutline(way.tags) && !isLineAllTheSame(way.tags));
    if (isArea) {
      addOutline({record, &way.tags, {std::move(*ring)}, {}, {}});
    } else if (isOsmWall(way.tags)) {
      addWall(way, record);
    } else if (osmWalkMeaning(way.tags)) {
      found_.walks.push_back({&way, levelsOf(record, way.tags)});
    } else {
      tellWay(way, record);
    }
  }

  // A footway that ends where it begins is still a line.
  static bool isLineAllTheSame(const OsmTags& tags) {
    return osmWalkMeaning(tags) && !tags.is("area", "yes") && !tags.has("indoor") &&
           !tags.has("room");
  }

  void addWall(const OsmWay& way, const std::string& record) {
    std::vector<double> levels = levelsOf(record, way.tags);
    if (levels.empty()) {
      tellWithoutLevel(record, way.tags);
    } else {
      found_.walls.push_back({&way, std::move(levels)});
    }
  }

  void tellWay(const OsmWay& way, const std::string& record) {
    if (!isAboutIndoors(way.tags)) {
      ++found_.others;
    } else if (isOutline(way.tags)) {
      oddities_.tell(record, "noShape", "It encloses nothing.");
    } else if (isOsmBarred(way.tags)) {
      tellBarred(record);
    } else if (way.tags.has("highway")) {
      oddities_.tell(record, "notWalked", "Nobody walks along it.");
    } else {
      oddities_.tell(record, "unknownKind", "Its tags are known for nothing that a venue has.");
    }
  }

  void addNode(const OsmNode& node) {
    if (node.tags.isEmpty()) return;
    const std::string record = osmId(OsmKind::node, node.id);
    const std::string category = osmCategory(node.tags);
    const bool isDoor = isOsmDoor(node.tags);
    const bool isIndoors = isAboutIndoors(node.tags);
    const bool isTold = isDoor || isOsmLift(node.tags) || isIndoors;
    if (!isTold) {
      ++found_.others;
      return;
    }
    OsmPoint point{&node, levelsOf(record, node.tags)};
    if (!isDoor && isOsmBarred(node.tags)) {
      tellBarred(record);
    } else if (isOsmLift(node.tags)) {
      found_.lifts.push_back(std::move(point));
    } else if (isDoor) {
      found_.doors.push_back(std::move(point));
    } else if (point.levels.empty()) {
      tellWithoutLevel(record, node.tags);
    } else if (category.empty() && osmNames(node.tags).empty()) {
      oddities_.tell(record, "unknownKind", "Its tags are known for nothing that a venue has.");
    } else {
      found_.places.push_back(std::move(point));
    }
  }

  const OsmData& data_;
  Oddities& oddities_;
  OsmSelection found_;
  std::unordered_map<std::int64_t, const OsmWay*> ways_;
  bool saysLevels_ = false;
  // Ways whose relation stands for them.
  std::unordered_set<std::int64_t> taken_;
};

std::size_t cornersOf(const OsmOutline& outline) {
  std::size_t corners = 0;
  for (const OsmRing& ring : outline.outer) corners += ring.size();
  for (const OsmRing& ring : outline.inner) corners += ring.size();
  return corners;
}

}  // namespace

bool isTooMuch(const OsmSelection& found) {
  std::size_t things = 0;
  std::size_t corners = 0;
  const auto add = [&](std::size_t levels, std::size_t cornersOfEach) {
    things += levels;
    corners += levels * cornersOfEach;
  };
  for (const auto* const outlines : {&found.areas, &found.columns, &found.levels}) {
    for (const OsmOutline& outline : *outlines) add(outline.levels.size(), cornersOf(outline));
  }
  for (const auto* const lines : {&found.walls, &found.walks}) {
    for (const OsmLine& line : *lines) add(line.levels.size(), line.way->refs.size());
  }
  for (const auto* const points : {&found.doors, &found.lifts, &found.places}) {
    for (const OsmPoint& point : *points) add(point.levels.size(), 1);
  }
  return things > mostOsmThings || corners > mostOsmCorners;
}

OsmSelection selectOsm(const OsmData& data, Oddities& oddities) {
  return Selector(data, oddities).select();
}

}  // namespace tern::imports
