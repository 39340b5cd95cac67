#pragma once

#include <cstdint>
#include <memory>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::inline v5 {

class TernASGrid;
class TernMapCollection;
struct TernWaypoint;

/// What can be asked for routes: the ordering of destinations takes this much of a venue and no
/// more.
///
/// Ownership: whoever implements it says.
/// Threads: any number of routes at once, as long as nobody changes the maps.
/// Fails: never; no route is empty.
class TERN_API TernRouting {
 public:
  virtual ~TernRouting() = default;

  /// The graph to search, null before there is one.
  virtual std::shared_ptr<TernASGrid> getGrid() const = 0;
  /// The maps with their scales; may be null.
  virtual std::shared_ptr<TernMapCollection> getMaps() const = 0;
  /// The cheapest route over links of at most that accessibility level. What its own search has
  /// found of its nodes stays.
  virtual TernRoute wayfind(const std::shared_ptr<TernWaypoint>& start,
                            const std::shared_ptr<TernWaypoint>& to,
                            std::int64_t accessibility) const = 0;
};

}  // namespace tern
