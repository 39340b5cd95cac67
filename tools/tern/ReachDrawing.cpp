#include "tools/tern/ReachDrawing.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

// By which waypoint each is reached, and at what cost.
struct Step {
  std::int64_t before = 0;
  float cost = 0;
};
using Steps = std::map<std::int64_t, Step>;

// What the search says that the grid's nodes show.
void takeSteps(const TernASGrid& grid, const Value& reached, Steps& steps) {
  for (const Value& each : reached.items()) {
    const auto node = grid.getNodeById(each["waypoint"].integer());
    if (!node || !node->visited()) continue;
    const auto before = node->parent();
    const auto [known, isNew] =
        steps.try_emplace(node->nodeId(), Step{before ? before->nodeId() : 0, node->g()});
    if (isNew || known->second.cost <= node->g()) continue;
    known->second = {before ? before->nodeId() : 0, node->g()};
  }
}

// A search to the last that is reached comes by all the others.
Steps stepsTo(const TernActiveVenue& venue, const Value& request, const Value& reached) {
  Steps steps;
  if (reached.size() == 0) return steps;
  TernASSearch search;
  search.grid = venue.globalASGrid();
  search.maps = venue.maps;
  const std::int64_t last = reached.items().back()["waypoint"].integer();
  std::set<std::int64_t> asked;
  for (const Value& id : request["from"].items()) {
    const std::int64_t start = id.integer();
    if (start == last || !asked.insert(start).second) continue;
    search.grid->reset();
    (void)search.search(start, last, levelOf(request));
    takeSteps(*search.grid, reached, steps);
  }
  return steps;
}

picture::PlacedPoint placed(const TernASNode& node, std::string name) {
  return {std::move(name), node.mapId(), {node.x(), node.y()}};
}

}  // namespace

picture::ReachPicture reachPictureOf(const TernActiveVenue& venue, const Value& request,
                                     const Value& answer) {
  const auto grid = venue.globalASGrid();
  const Value& reached = answer["reached"];
  picture::ReachPicture drawn{venue, std::string(venue.name.text())};
  drawn.labels = venue.mapLabels.get();
  std::set<std::int64_t> starts;
  for (const Value& id : request["from"].items()) {
    const auto node = grid->getNodeById(id.integer());
    if (!node || !starts.insert(node->nodeId()).second) continue;
    drawn.starts.push_back(placed(*node, placeName(venue, node->nodeId())));
  }
  std::map<std::int64_t, double> metres;
  for (const Value& each : reached.items()) {
    metres[each["waypoint"].integer()] = each["mm"].number() / 1000;
  }
  for (const auto& [id, step] : stepsTo(venue, request, reached)) {
    const auto node = grid->getNodeById(id);
    const auto before = grid->getNodeById(step.before);
    if (starts.contains(id) || !node || !before) continue;
    if (before->mapId() != node->mapId()) {
      drawn.arrivals.push_back(placed(*node, {}));
      continue;
    }
    const auto known = metres.find(step.before);
    const double from = known == metres.end() ? metres[id] : known->second;
    drawn.links.push_back(
        {node->mapId(), {before->x(), before->y()}, {node->x(), node->y()}, from, metres[id]});
  }
  return drawn;
}

}  // namespace tern::command
