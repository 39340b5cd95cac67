#include "TernCoreKit/wayfinding/TernWalks.hpp"

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/platform/detail/common/SharedWork.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/detail/GridNodes.hpp"
#include "TernCoreKit/wayfinding/detail/WalkLengths.hpp"

namespace tern::inline v5 {

namespace {

using detail::Position;
using Places = std::vector<Position>;

Places placesOf(const detail::GridGraph& graph, std::span<const std::int64_t> ids) {
  Places places;
  places.reserve(ids.size());
  for (const std::int64_t id : ids) places.push_back(graph.find(id));
  return places;
}

// The walks to the places that the search has come to from the start. A node that is closed keeps
// its score and its parent, so going on past one goal changes nothing of the way to it.
void read(const detail::SearchState& state, Position start, const Places& to,
          const detail::WalkLengths& lengths, TernWalks::Row& row) {
  for (std::size_t i = 0; i < to.size(); ++i) {
    const Position end = to[i];
    if (end == start) {
      row[i] = TernWalk{};
    } else if (end != detail::noPosition && state.isVisited(end)) {
      row[i] = {state.nodes[end].score, lengths.millimetresTo(end)};
    }
  }
}

}  // namespace

// The first turn holds the links and keeps what the nodes show of the last search.
std::optional<std::vector<TernWalks::Row>> TernWalks::between(std::span<const std::int64_t> from,
                                                              std::span<const std::int64_t> to,
                                                              std::int64_t accessLevel) const {
  std::vector<Row> rows;
  const auto measureAll = [&] {
    rows.assign(from.size(), Row(to.size()));
    if (grid == nullptr) return;
    detail::GridNodes& nodes = *grid->nodes_;
    const detail::SearchTurn first(nodes);
    const Places ends = placesOf(nodes.graph, to);
    const detail::WalkScales scales(nodes.graph, maps.get());
    detail::shareWork(from.size(), [&](detail::Pieces& pieces) {
      detail::SearchTurn turn(nodes);
      detail::WalkLengths lengths(scales);
      std::vector<detail::Settled> settled;
      while (const auto piece = pieces.next()) {
        const Position start = nodes.graph.find(from[*piece]);
        if (start == detail::noPosition) continue;
        turn.searchWhole(start, accessLevel, first.links(), settled);
        lengths.measure(settled);
        read(turn.state(), start, ends, lengths, rows[*piece]);
      }
    });
  };
  if (!detail::attempt(measureAll)) return std::nullopt;
  return rows;
}

}  // namespace tern
