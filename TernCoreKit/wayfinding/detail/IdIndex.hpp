// Finds where an id first stands in a list, as a scan from the front would.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "TernCoreKit/wayfinding/detail/Index.hpp"

namespace tern::inline v5::detail {

class IdIndex {
 public:
  static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

  IdIndex() = default;
  explicit IdIndex(std::span<const std::int64_t> ids);

  std::uint32_t find(std::int64_t id) const {
    if (!table_.empty()) {
      // Ids that lie close together are their own address.
      const std::uint64_t offset =
          static_cast<std::uint64_t>(id) - static_cast<std::uint64_t>(least_);
      return offset < table_.size() ? table_[offset] : none;
    }
    return slots_.empty() ? none : isSorted_ ? findSorted(id) : slots_[slotOf(id)].index;
  }

  // The same, for a list that has an index of its own.
  template <Index I>
  I first(std::int64_t id) const {
    return I{find(id)};
  }

  // How many different ids there are.
  std::size_t distinct() const { return distinct_; }

 private:
  struct Slot {
    std::int64_t id = 0;
    std::uint32_t index = none;
  };

  void fillTable(std::span<const std::int64_t> ids, std::size_t extent);
  // False when the ids have been made to crowd together.
  bool fillSlots(std::span<const std::int64_t> ids);
  void sortSlots(std::span<const std::int64_t> ids);
  // The first slot to look for the id in.
  std::size_t homeOf(std::int64_t id) const;
  // The slot that holds the id, or the empty one where it would go.
  std::size_t slotOf(std::int64_t id) const;
  std::uint32_t findSorted(std::int64_t id) const;

  std::int64_t least_ = 0;
  std::size_t distinct_ = 0;
  std::vector<std::uint32_t> table_;
  std::vector<Slot> slots_;  // open addressing, a power of two, at most half full
  bool isSorted_ = false;    // then the slots stand in the order of their ids, and all are full
};

}  // namespace tern::detail
