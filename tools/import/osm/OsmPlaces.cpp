#include "tools/import/osm/OsmPlaces.hpp"

#include <set>
#include <utility>

#include "tools/import/draft/Categories.hpp"
#include "tools/import/osm/OsmCodes.hpp"
#include "tools/import/ways/FloorAreas.hpp"

namespace tern::imports {

bool OsmPlaces::isPlace(const OsmTags& tags) {
  return isOsmFacility(osmCategory(tags)) || !osmNames(tags).empty();
}

void OsmPlaces::plan(OsmSpot spot, std::vector<std::size_t> rooms) {
  std::optional<std::size_t> stand;
  if (rooms.empty()) {
    stand = site_.stands.size();
    site_.stands.push_back({spot.id, spot.floor, spot.at});
  }
  planned_.push_back({std::move(spot), std::move(rooms), stand});
}

void OsmPlaces::planDoor(OsmSpot door) { planned_.push_back({std::move(door), {}, std::nullopt}); }

void OsmPlaces::add(const MadeWays& made) {
  for (std::size_t i = 0; i < draft_.nodes.size(); ++i) {
    nodesById_.try_emplace(draft_.nodes[i].id, i);
  }
  findStands(made);
  const NearNodes near(draft_);
  std::set<std::string> reached;
  for (const Planned& planned : planned_) {
    const std::vector<std::size_t> nodes = nodesOf(planned, made, near);
    if (nodes.empty()) continue;
    reached.insert(planned.spot.record);
    addPlace(planned.spot, nodes);
  }
  for (const Planned& planned : planned_) {
    if (reached.contains(planned.spot.record)) continue;
    draft_.oddities.tell(planned.spot.record, "unreached", "No way leads to it.");
  }
}

std::vector<std::size_t> OsmPlaces::nodesIn(const std::vector<std::size_t>& rooms,
                                            const MadeWays& made) const {
  std::vector<std::size_t> nodes;
  for (const std::size_t room : rooms) {
    nodes.insert(nodes.end(), made.insideDoors[room].begin(), made.insideDoors[room].end());
  }
  if (!nodes.empty()) return nodes;
  for (const std::size_t room : rooms) {
    const auto stands = standsIn_.find(room);
    if (stands == standsIn_.end()) continue;
    nodes.insert(nodes.end(), stands->second.begin(), stands->second.end());
  }
  return nodes;
}

std::vector<std::size_t> OsmPlaces::nodesOf(const Planned& planned, const MadeWays& made,
                                            const NearNodes& near) const {
  if (!planned.rooms.empty()) return nodesIn(planned.rooms, made);
  std::vector<std::size_t> nodes;
  if (planned.stand) {
    const auto node = made.ofStand[*planned.stand];
    const auto beside =
        node ? node : near.nearest(planned.spot.floor, planned.spot.at, mostAsideMetres);
    if (beside) nodes.push_back(*beside);
  } else if (const auto door = nodesById_.find(planned.spot.id); door != nodesById_.end()) {
    nodes.push_back(door->second);
  }
  return nodes;
}

void OsmPlaces::findStands(const MadeWays& made) {
  const FloorAreas byPlace(site_.areas);
  for (std::size_t i = 0; i < site_.stands.size(); ++i) {
    const auto area = byPlace.at(site_.stands[i].floor, site_.stands[i].at);
    if (area && made.ofStand[i]) standsIn_[*area].push_back(*made.ofStand[i]);
  }
}

void OsmPlaces::addPlace(const OsmSpot& spot, const std::vector<std::size_t>& nodes) {
  const OsmTags& tags = *spot.tags;
  const std::string category = osmCategory(tags);
  const Names names = osmNames(tags);
  const bool isToilets = category == "restroom";
  if (isToilets && isOsmToiletsForWheelchairs(tags)) {
    add(spot, "restroom.wheelchair", {}, nodes);
  }
  if (isOsmFacility(category)) add(spot, category, {}, nodes);
  if (!names.empty() && !isToilets) add(spot, category, names, nodes);
}

void OsmPlaces::add(const OsmSpot& spot, const std::string& category, Names names,
                    const std::vector<std::size_t>& nodes) {
  const std::string known = category.empty() ? "unspecified" : category;
  const auto [at, isNew] = categories_.try_emplace(known, draft_.categories.size());
  if (isNew) draft_.categories.push_back({known, namesOfCategory(known)});
  draft_.places.push_back(
      {spot.id, at->second, std::move(names), spot.floor, spot.at, nodes, osmKeywords(*spot.tags)});
}

}  // namespace tern::imports
