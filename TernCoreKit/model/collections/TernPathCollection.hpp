#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"

namespace tern::inline v5 {

struct TernPathType;
struct TernWaypoint;

/// The paths of a map.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernPathCollection : public TernTypedCollection<TernPath> {
 public:
  /// Without records.
  TernPathCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernPathCollection> copyWithZone() const;

  /// Those of the type; its id is compared in 32 bits.
  std::vector<std::shared_ptr<TernPath>> getByPathType(
      const std::shared_ptr<TernPathType>& pathType) const;
  /// Those of that name.
  std::vector<std::shared_ptr<TernPath>> getByName(const Value& name) const;
  /// Those that join the waypoint to others.
  std::vector<std::shared_ptr<TernPath>> getByWaypoint(
      const std::shared_ptr<TernWaypoint>& waypoint) const;
  /// Those of that direction code; see TernPath.
  std::vector<std::shared_ptr<TernPath>> getByDirection(std::int64_t direction) const;
};

}  // namespace tern
