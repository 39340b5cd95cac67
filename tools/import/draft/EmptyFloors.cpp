#include "tools/import/draft/EmptyFloors.hpp"

#include <utility>

namespace tern::imports {

namespace {

// Leaves out what is not to be kept, and gives for each place in the list its new one.
template <class Item>
std::vector<std::size_t> keepOnly(std::vector<Item>& list, const std::vector<bool>& isKept,
                                  const char* why, Oddities& oddities) {
  std::vector<std::size_t> places;
  std::vector<Item> kept;
  for (std::size_t i = 0; i < list.size(); ++i) {
    places.push_back(kept.size());
    if (isKept[i]) {
      kept.push_back(std::move(list[i]));
    } else {
      oddities.tell(list[i].id, "empty", why);
    }
  }
  list = std::move(kept);
  return places;
}

void dropFloors(Draft& draft) {
  std::vector<bool> isFull(draft.floors.size());
  for (const DraftNode& node : draft.nodes) isFull[node.floor] = true;
  const auto floors = keepOnly(draft.floors, isFull, "Nothing lies on the level.", draft.oddities);
  for (DraftNode& node : draft.nodes) node.floor = floors[node.floor];
  for (DraftPlace& place : draft.places) place.floor = floors[place.floor];
  const auto move = [&](auto& list) {
    std::erase_if(list, [&](const auto& item) { return !isFull[item.floor]; });
    for (auto& item : list) item.floor = floors[item.floor];
  };
  move(draft.areas);
  move(draft.walls);
  move(draft.marks);
  move(draft.doors);
}

}  // namespace

void dropEmptyFloors(Draft& draft) {
  dropFloors(draft);
  std::vector<bool> isUsed(draft.buildings.size());
  for (const DraftFloor& floor : draft.floors) isUsed[floor.building] = true;
  const auto buildings =
      keepOnly(draft.buildings, isUsed, "No level with anything on it is its own.", draft.oddities);
  for (DraftFloor& floor : draft.floors) floor.building = buildings[floor.building];
}

}  // namespace tern::imports
