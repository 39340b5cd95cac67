// What everything of a file is put into its place by: what was selected, its nodes, and which of
// its levels are floors.
//
// Ownership: borrows all of it. Threads: one caller at a time. Fails: never.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/osm/OsmFloors.hpp"
#include "tools/import/osm/OsmNodes.hpp"
#include "tools/import/osm/OsmSelection.hpp"

namespace tern::imports {

struct OsmFrame {
  const OsmSelection& found;
  OsmNodes& nodes;
  const OsmFloors& floors;
  Draft& draft;

  void tell(const std::string& record, std::string_view kind, std::string why) const {
    draft.oddities.tell(record, kind, std::move(why));
  }

  // Those of the levels that are floors; the others are told of.
  std::vector<std::size_t> floorsOf(const std::string& record,
                                    const std::vector<double>& levels) const {
    std::vector<std::size_t> on;
    for (const double level : levels) {
      const auto floor = floors.find(level);
      if (floor != floors.end()) {
        on.push_back(floor->second);
      } else {
        tell(record, "noFloor",
             "Nothing lies on its level " + Value(level).printed() + " alone or leads to it.");
      }
    }
    return on;
  }

  std::string idOn(const std::string& record, std::size_t floor, bool isOnSeveral) const {
    return isOnSeveral ? record + "@" + nodes.levelOf(floor) : record;
  }
};

}  // namespace tern::imports
