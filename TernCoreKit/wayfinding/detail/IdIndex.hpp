// Finds the first place at which an id stands in a list, as a scan from the front would.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace tern::detail {

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
    return slots_.empty() ? none : slots_[slotOf(id)].place;
  }

  // How many different ids there are.
  std::size_t distinct() const { return distinct_; }

 private:
  struct Slot {
    std::int64_t id = 0;
    std::uint32_t place = none;
  };

  void fillTable(std::span<const std::int64_t> ids, std::size_t extent);
  void fillSlots(std::span<const std::int64_t> ids);
  // The slot that holds the id, or the empty one where it would go.
  std::size_t slotOf(std::int64_t id) const;

  std::int64_t least_ = 0;
  std::size_t distinct_ = 0;
  std::vector<std::uint32_t> table_;
  std::vector<Slot> slots_;  // open addressing, a power of two, at most half full
};

}  // namespace tern::detail
