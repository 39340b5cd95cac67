// Finds the node from which something beside the ways is reached. One that a way on foot leads to
// comes before any other, so that nobody is sent to a shop by way of a lift's cabin; and one on the
// floor itself before one that is half a floor above or below it.
//
// Ownership: a plain value. Threads: any. Fails: never.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "TernCoreKit/spatial/tree/KDTree.hpp"
#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

// How far from the ways a place may be.
inline constexpr double mostAsideMetres = 30;

class NearNodes {
 public:
  // As the draft's nodes and links are now.
  explicit NearNodes(const Draft& draft);

  // The nearest; none when there is none within so many metres.
  std::optional<std::size_t> nearest(std::size_t floor, Point at, double withinMetres) const;

 private:
  struct Entry {
    double x = 0;
    double y = 0;
    std::size_t node = 0;

    static constexpr std::size_t dimensions = 2;
    double kdDimension(std::size_t axis) const { return axis == 0 ? x : y; }
    double squaredDistance(const Entry& to) const {
      return (to.x - x) * (to.x - x) + (to.y - y) * (to.y - y);
    }
    friend bool operator==(const Entry&, const Entry&) = default;
  };

  using Tree = KDTree<Entry>;

  std::optional<std::size_t> nearestOn(const std::vector<Tree>& trees, std::size_t floor, Point at,
                                       double withinMetres) const;

  std::vector<double> ordinals_;
  // By floor.
  std::vector<Tree> walked_;
  std::vector<Tree> all_;
};

}  // namespace tern::imports
