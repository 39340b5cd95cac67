// The paths of a map.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"

namespace tern {

struct TernPathType;
struct TernWaypoint;

class TERN_API TernPathCollection : public TernTypedCollection<TernPath> {
 public:
  TernPathCollection();

  std::shared_ptr<TernPathCollection> copyWithZone() const;

  // Ids of path types are compared in 32 bits.
  std::vector<std::shared_ptr<TernPath>> getByPathType(
      const std::shared_ptr<TernPathType>& pathType) const;
  std::vector<std::shared_ptr<TernPath>> getByName(const Value& name) const;
  // Those that join the waypoint to others.
  std::vector<std::shared_ptr<TernPath>> getByWaypoint(
      const std::shared_ptr<TernWaypoint>& waypoint) const;
  std::vector<std::shared_ptr<TernPath>> getByDirection(std::int64_t direction) const;
};

}  // namespace tern
