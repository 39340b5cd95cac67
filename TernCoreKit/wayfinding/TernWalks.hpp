#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

class TernASGrid;
class TernMapCollection;

/// How far it is from one waypoint to another.
struct TernWalk {
  /// What the route costs: that of its last segment.
  float cost = 0;
  /// Millimetres that are walked: of each segment what `pixelDistance` grows by, times the map's
  /// scale, in single precision.
  float millimetres = 0;

  /// Whether both numbers are equal.
  friend bool operator==(const TernWalk&, const TernWalk&) = default;
};

/// Finds how far it is from each of several waypoints to each of several, by one search for each
/// start. Each walk is that of the very route which `TernASSearch::route` finds for the pair.
///
/// Ownership: shares the grid and the maps.
/// Threads: any; one call works on several threads at once. All of its searches see the blocks as
/// they are when it begins, and leave what the grid's nodes show of the last search as it is.
/// Fails: by none, for want of memory; an absent grid and unknown waypoints have no walks.
///
///     TernWalks walks;
///     walks.grid = venue.globalASGrid();
///     walks.maps = venue.maps;
///     if (const auto rows = walks.between(doors, desks, 100)) {
///       if (const auto& walk = (*rows)[0][2]) show(walk->millimetres);
///     }
class TERN_API TernWalks {
 public:
  /// The walks from one start, none where there is no route.
  using Row = std::vector<std::optional<TernWalk>>;

  /// The graph to search.
  std::shared_ptr<TernASGrid> grid;
  /// The venue's maps, for their scales.
  std::shared_ptr<TernMapCollection> maps;

  /// A row for each of `from`, in it a walk for each of `to`, over links of at most that
  /// accessibility level. From a waypoint to itself both numbers are 0.
  std::optional<std::vector<Row>> between(std::span<const std::int64_t> from,
                                          std::span<const std::int64_t> to,
                                          std::int64_t accessLevel) const;
};

}  // namespace tern
