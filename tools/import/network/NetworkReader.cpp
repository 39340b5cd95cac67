#include "tools/import/network/NetworkReader.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "tools/import/draft/MiddleValue.hpp"
#include "tools/import/draft/NearNodes.hpp"
#include "tools/import/network/LiftKinds.hpp"
#include "tools/import/network/NetworkCodes.hpp"
#include "tools/import/network/NetworkFiles.hpp"
#include "tools/import/network/StoreyNumbers.hpp"
#include "tools/import/source/GeoJson.hpp"

namespace tern::imports {

namespace {

constexpr std::string_view sourceLanguage = "ja";
// Farther from the middle of the site is another place.
constexpr double mostMetres = 30'000;
constexpr double mostOrdinal = 1'000;
constexpr std::size_t mostFloors = 500;
// What a link's line may end beside its node.
constexpr double mostLooseMetres = 0.5;

Names named(std::string_view text) {
  if (text.empty()) return {};
  return {{std::string(sourceLanguage), std::string(text)}};
}

// Some have the number of the storey instead.
std::optional<double> ordinalOf(const NetworkRecord& record) {
  const auto ordinal = record.has("ordinal") ? numberOf(record.value("ordinal"))
                                             : ordinalOfStorey(record.value("floor"));
  if (!ordinal || std::abs(*ordinal) > mostOrdinal) return std::nullopt;
  return *ordinal == 0 ? 0 : *ordinal;  // -0 is 0
}

// The longitude and latitude that a node states beside its place in the file.
std::optional<LonLat> statedPlace(const NetworkRecord& node) {
  const auto longitude = numberOf(node.value("lon"));
  const auto latitude = numberOf(node.value("lat"));
  if (!longitude || !latitude) return std::nullopt;
  return PlaneSystem().onGlobe({*longitude, *latitude});
}

Point middleOf(const Line& line) {
  Point sum;
  for (const Point at : line) sum = {sum.x + at.x, sum.y + at.y};
  const auto count = static_cast<double>(line.size());
  return {sum.x / count, sum.y / count};
}

// A node whose place is known but not yet on the plane.
struct GlobeNode {
  const NetworkRecord* record;
  double ordinal;
  LonLat place;
};

class NetworkReader {
 public:
  explicit NetworkReader(const SourceFiles& source)
      : name_(source.name()), files_(source, draft_.oddities) {}

  ReadDraft read() {
    const std::vector<GlobeNode> nodes = findNodes();
    if (nodes.empty()) return {{}, whyNone()};
    readHead(nodes);
    readFloors(nodes);
    if (draft_.floors.size() > mostFloors) return {{}, "the network has more than 500 floors"};
    for (const GlobeNode& node : nodes) addNode(node);
    if (draft_.nodes.empty()) return {{}, "no node of the network lies near the others"};
    readLinks();
    readPlans();
    readPlaces();
    tellTheRest();
    return {std::move(draft_), std::nullopt};
  }

 private:
  void tell(const NetworkRecord& record, std::string_view kind, std::string why) {
    draft_.oddities.tell(record.id, kind, std::move(why));
  }

  // With the first of what is wrong, which is wrong with all.
  std::string whyNone() const {
    const std::vector<Oddity>& told = draft_.oddities.told();
    return "no node of the network has a floor and a place" +
           (told.empty() ? "" : "; " + told.front().id + ": " + told.front().why);
  }

  // Networks of streets say no floor at all.
  bool areAllOnOneFloor() {
    const std::vector<NetworkRecord>& nodes = files_.of(RecordKind::node);
    const bool isFlat = std::ranges::all_of(nodes, [](const NetworkRecord& node) {
      return !node.has("ordinal") && !node.has("floor");
    });
    if (isFlat && !nodes.empty()) {
      draft_.oddities.remark("ordinal 0", "noLevels",
                             "No node says a floor; all of them are taken to lie on this one.");
    }
    return isFlat;
  }

  std::vector<GlobeNode> findNodes() {
    std::vector<GlobeNode> nodes;
    std::unordered_set<std::string_view> known;
    const bool isFlat = areAllOnOneFloor();
    for (const NetworkRecord& record : files_.of(RecordKind::node)) {
      const auto ordinal = isFlat ? std::optional(0.0) : ordinalOf(record);
      const auto drawn = globePoint(*record.geometry, record.system);
      const auto place = drawn ? drawn : statedPlace(record);
      if (!known.insert(record.id).second) {
        draft_.oddities.tell(record.id + " (again)", "repeated",
                             "Another node has the same id; the first one counts.");
      } else if (!ordinal) {
        tell(record, "noFloor", "The node has no ordinal.");
      } else if (!place) {
        tell(record, "noPlace", "The node has no place on the globe.");
      } else {
        nodes.push_back({&record, *ordinal, *place});
      }
    }
    return nodes;
  }

  void readHead(const std::vector<GlobeNode>& nodes) {
    draft_.id = name_;
    draft_.language = sourceLanguage;
    draft_.stamp = files_.stamp();
    std::vector<double> longitudes;
    std::vector<double> latitudes;
    for (const GlobeNode& node : nodes) {
      longitudes.push_back(node.place.longitude);
      latitudes.push_back(node.place.latitude);
    }
    draft_.plane = LocalPlane({middleValue(longitudes), middleValue(latitudes)});
    draft_.buildings.push_back({name_, {}, {}});
    for (const RecordKind kind : {RecordKind::building, RecordKind::site}) {
      for (const NetworkRecord& record : files_.of(kind)) readSite(record);
    }
    if (draft_.names.empty()) draft_.names = {{"", name_}};
  }

  void readSite(const NetworkRecord& record) {
    DraftBuilding& building = draft_.buildings.front();
    if (draft_.names.empty()) draft_.names = named(record.text("name"));
    if (building.names.empty()) building.names = named(record.text("name"));
    if (!building.address.empty()) return;
    for (const std::string_view key : {"province", "city", "address1", "address2"}) {
      building.address += record.text(key);
    }
  }

  // A floor for each ordinal, named by the plans where they name it.
  void readFloors(const std::vector<GlobeNode>& nodes) {
    std::map<double, DraftFloor> floors;
    for (const NetworkRecord& record : files_.of(RecordKind::floor)) {
      const auto ordinal = ordinalOf(record);
      if (ordinal) {
        readFloor(record, floors[*ordinal]);
        ordinalOfFloor_.emplace(record.id, *ordinal);
      } else {
        tell(record, "noFloor", "The floor has no ordinal.");
      }
    }
    for (const GlobeNode& node : nodes) floors.try_emplace(node.ordinal);
    for (auto& [ordinal, floor] : floors) {
      const std::string number = Value(ordinal).printed();
      floor.ordinal = ordinal;
      if (floor.id.empty()) floor.id = "ordinal " + number;
      if (floor.shortNames.empty()) floor.shortNames = {{"", number}};
      if (floor.names.empty()) floor.names = floor.shortNames;
      indexOfOrdinal_.emplace(ordinal, draft_.floors.size());
      draft_.floors.push_back(std::move(floor));
    }
  }

  void readFloor(const NetworkRecord& record, DraftFloor& floor) {
    if (floor.id.empty()) floor.id = record.id;
    if (floor.names.empty()) floor.names = named(record.text("name"));
    if (floor.shortNames.empty()) floor.shortNames = named(record.text("short_name"));
    std::vector<Polygon> shapes = polygonsOf(record);
    std::ranges::move(shapes, std::back_inserter(floor.shapes));
  }

  void addNode(const GlobeNode& node) {
    const Point at = draft_.plane.at(node.place);
    if (!isNear(at)) {
      tell(*node.record, "far", "The node lies more than 30 km from the others.");
      return;
    }
    nodes_.emplace(node.record->id, draft_.nodes.size());
    draft_.nodes.push_back({node.record->id, indexOfOrdinal_.at(node.ordinal), at,
                            statedPlace(*node.record), node.record->code("in_out") == 2});
  }

  static bool isNear(Point at) { return std::hypot(at.x, at.y) <= mostMetres; }

  // Empty, and told of, where it has none that can be drawn.
  std::vector<Polygon> polygonsOf(const NetworkRecord& record) {
    const auto globe = globePolygons(*record.geometry, record.system);
    std::vector<Polygon> shapes;
    if (globe) {
      for (const GlobePolygon& polygon : *globe) shapes.emplace_back(onPlane(polygon));
    }
    const bool isGood = globe && std::ranges::all_of(shapes, [](const Polygon& shape) {
                          return std::ranges::all_of(shape.rings, [](const Line& ring) {
                            return std::ranges::all_of(ring, isNear);
                          });
                        });
    if (isGood) return shapes;
    tell(record, "noShape", "It has no polygon near the site.");
    return {};
  }

  Polygon onPlane(const GlobePolygon& polygon) const {
    Polygon shape;
    for (const GlobeLine& ring : polygon) shape.rings.push_back(onPlane(ring));
    return shape;
  }

  Line onPlane(const GlobeLine& line) const {
    Line points;
    for (const LonLat place : line) points.push_back(draft_.plane.at(place));
    return points;
  }

  // Empty, and told of, where it has none that can be drawn.
  std::vector<Line> linesOf(const NetworkRecord& record) {
    std::vector<Line> lines;
    for (const GlobeLine& globe : globeLines(*record.geometry, record.system)) {
      Line line = onPlane(globe);
      if (std::ranges::all_of(line, isNear)) lines.push_back(std::move(line));
    }
    if (lines.empty()) tell(record, "noShape", "It has no line near the site.");
    return lines;
  }

  // Of a link, from its first node to its last one.
  std::optional<Line> wholeLineOf(const NetworkRecord& record) {
    const auto globe = globeLine(*record.geometry, record.system);
    if (globe) {
      Line line = onPlane(*globe);
      if (std::ranges::all_of(line, isNear)) return line;
    }
    tell(record, "noShape", "It has no line near the site.");
    return std::nullopt;
  }

  void readLinks() {
    std::vector<StatedLift> lifts;
    for (const NetworkRecord& record : files_.of(RecordKind::link)) {
      if (!linkIds_.insert(record.id).second) {
        draft_.oddities.tell(record.id + " (again)", "repeated",
                             "Another link has the same id; the first one counts.");
      } else if (addLink(record) && draft_.links.back().kind == LinkKind::lift) {
        lifts.push_back({draft_.links.size() - 1, liftStatementOf(record)});
      }
    }
    settleLifts(draft_, lifts);
  }

  // False, and told of, where it does not lead from a node to another.
  bool addLink(const NetworkRecord& record) {
    const auto from = nodes_.find(record.idOf("start_id"));
    const auto to = nodes_.find(record.idOf("end_id"));
    if (from == nodes_.end() || to == nodes_.end()) {
      tell(record, "dangling", "The link names a node that is not there.");
      return false;
    }
    if (from->second == to->second) {
      tell(record, "zeroLength", "The link leads from a node to itself.");
      return false;
    }
    DraftLink link{.id = record.id,
                   .from = from->second,
                   .to = to->second,
                   .kind = linkKindOf(record),
                   .direction = directionOf(record),
                   .bends = bendsOf(record, from->second, to->second),
                   .hasSteps = hasSteps(record),
                   .isSteep = isSteep(record),
                   .details = detailsOf(record)};
    if (link.kind == LinkKind::unknown) {
      draft_.oddities.remark(record.id, "unknownKind",
                             "The link does not say what kind of way it is.");
    }
    draft_.links.push_back(std::move(link));
    return true;
  }

  Line bendsOf(const NetworkRecord& record, std::size_t from, std::size_t to) {
    const auto line = wholeLineOf(record);
    if (!line) return {};
    const auto apart = [&](Point end, std::size_t node) {
      const Point at = draft_.nodes[node].at;
      return std::hypot(end.x - at.x, end.y - at.y);
    };
    if (std::max(apart(line->front(), from), apart(line->back(), to)) > mostLooseMetres) {
      draft_.oddities.remark(record.id, "looseEnd",
                             "The link's line ends beside its node; it is led to the node.");
    }
    return {line->begin() + 1, line->end() - 1};
  }

  // The floor that a record of a plan names; none, and told of, for one that is not there.
  std::optional<std::size_t> floorOf(const NetworkRecord& record) {
    const auto ordinal = ordinalOfFloor_.find(record.idOf("floor_id"));
    if (ordinal != ordinalOfFloor_.end()) return indexOfOrdinal_.at(ordinal->second);
    tell(record, "dangling", "It names a floor that is not there.");
    return std::nullopt;
  }

  void readPlans() {
    for (const NetworkRecord& record : files_.of(RecordKind::space)) {
      addArea(record, areaKindOf(record));
    }
    for (const NetworkRecord& record : files_.of(RecordKind::fixture)) {
      addArea(record, AreaKind::closed);
    }
    for (const NetworkRecord& record : files_.of(RecordKind::drawing)) {
      addLines(record, draft_.walls);
    }
    for (const NetworkRecord& record : files_.of(RecordKind::opening)) {
      addLines(record, draft_.doors);
    }
  }

  void addArea(const NetworkRecord& record, AreaKind kind) {
    const auto floor = floorOf(record);
    if (!floor) return;
    std::vector<Polygon> shapes = polygonsOf(record);
    if (shapes.empty()) return;
    const std::string_view name = record.text("name");
    const Names names = isGeneric(name) ? Names() : named(name);
    draft_.areas.push_back({record.id, *floor, kind, names, std::move(shapes)});
  }

  void addLines(const NetworkRecord& record, std::vector<DraftLine>& lines) {
    const auto floor = floorOf(record);
    if (!floor) return;
    for (Line& line : linesOf(record)) lines.push_back({*floor, std::move(line)});
  }

  void readPlaces() {
    near_.emplace(draft_);
    for (const NetworkRecord& record : files_.of(RecordKind::facility)) readFacility(record);
    for (const NetworkRecord& record : files_.of(RecordKind::space)) readSpace(record);
    for (const NetworkRecord& record : files_.of(RecordKind::opening)) readOpening(record);
  }

  void readFacility(const NetworkRecord& record) {
    const auto floor = floorOf(record);
    if (!floor) return;
    const PlaceRow* const row = placeOfFacility(record.text("category"));
    const auto globe = globePoint(*record.geometry, record.system);
    if (row == nullptr) {
      tell(record, "unknownKind", "No meaning is known for the facility's category.");
    } else if (!globe) {
      tell(record, "noPlace", "The facility has no place on the globe.");
    } else {
      const Point at = draft_.plane.at(*globe);
      addPlace(record, *row, *floor, at, {});
      addNamedPlace(record, *row, *floor, at);
    }
  }

  void readSpace(const NetworkRecord& record) {
    const AreaKind kind = areaKindOf(record);
    const PlaceRow* const row = placeOfSpace(kind, record.text("category"));
    const auto floor = row != nullptr ? floorOf(record) : std::nullopt;
    const auto shapes = floor ? polygonsOf(record) : std::vector<Polygon>();
    if (shapes.empty()) return;
    const Point at = middleOf(shapes.front().rings.front());
    if (kind == AreaKind::toilets) addPlace(record, *row, *floor, at, {});
    addNamedPlace(record, *row, *floor, at);
  }

  void readOpening(const NetworkRecord& record) {
    const std::string_view name = record.text("name");
    const auto floor = name.empty() ? std::nullopt : floorOf(record);
    const std::vector<Line> lines = floor ? linesOf(record) : std::vector<Line>();
    if (lines.empty()) return;
    addNamedPlace(record, *placeOfOpening(name), *floor, middleOf(lines.front()));
  }

  void addNamedPlace(const NetworkRecord& record, const PlaceRow& row, std::size_t floor,
                     Point at) {
    const std::string_view name = record.text("name");
    if (name.empty() || isGeneric(name, row)) return;
    addPlace(record, row, floor, at, named(fullName(name, row)));
  }

  void addPlace(const NetworkRecord& record, const PlaceRow& row, std::size_t floor, Point at,
                Names names) {
    const auto node = near_->nearest(floor, at, mostAsideMetres);
    if (node) {
      draft_.places.push_back({record.id, categoryOf(row), std::move(names), floor, at, {*node}});
    } else {
      tell(record, "unreached", "No way on its floor comes within 30 m of it.");
    }
  }

  std::size_t categoryOf(const PlaceRow& row) {
    const auto [known, isNew] = categories_.try_emplace(row.id, draft_.categories.size());
    if (isNew) draft_.categories.push_back({std::string(row.id), row.names});
    return known->second;
  }

  void tellTheRest() {
    for (const NetworkRecord& record : files_.of(RecordKind::other)) {
      tell(record, "notRead", "A venue has nothing of this kind.");
    }
  }

  std::string name_;
  Draft draft_;
  NetworkFiles files_;
  std::optional<NearNodes> near_;
  std::map<double, std::size_t> indexOfOrdinal_;
  std::unordered_map<std::string_view, double> ordinalOfFloor_;
  std::unordered_map<std::string_view, std::size_t> nodes_;
  std::unordered_set<std::string_view> linkIds_;
  std::map<std::string_view, std::size_t> categories_;
};

}  // namespace

ReadDraft readNetwork(const SourceFiles& source) { return NetworkReader(source).read(); }

}  // namespace tern::imports
