// The finder of alternatives, told step by step over the public view of the graph: neighbours as
// lists, blocks set one by one.
//
// Threads: one. Fails: says how the finder's answer differs, nothing where they agree.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/wayfinding/TernASAlternativePath.hpp"

namespace tern::test {

class LiteralAlternatives {
 public:
  using Routes = TernASAlternativePath::Routes;

  std::shared_ptr<TernASGrid> grid;
  std::shared_ptr<TernMapCollection> maps;

  std::string differenceOf(const std::optional<TernRoute>& optimal,
                           const std::optional<Routes>& alternatives,
                           const std::shared_ptr<TernWaypoint>& from,
                           const std::shared_ptr<TernWaypoint>& to, const Value& options,
                           std::int64_t accessibility);

 private:
  using Nodes = std::vector<TernASNode>;

  std::optional<TernRoute> alternativeTo(const TernRoute& optimal);
  bool isDecision(const Nodes& points, std::size_t i) const;
  bool isValid(std::int64_t nodeId, std::int64_t parentId, int level) const;
  std::optional<TernRoute> detour(const TernRoute& optimal) const;
  std::optional<TernRoute> shortest() const;
  std::int64_t mapOf(std::int64_t nodeId) const;

  std::int64_t from_ = 0;
  std::int64_t to_ = 0;
  std::int64_t level_ = 0;
  double share_ = 0;
  double longest_ = 0;
  std::int64_t destinationId_ = 0;
  std::int64_t destinationMap_ = 0;
};

}  // namespace tern::test
