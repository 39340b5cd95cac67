#include "TernCoreKit/wayfinding/detail/IdIndex.hpp"

#include <algorithm>
#include <bit>

namespace tern::detail {

IdIndex::IdIndex(std::span<const std::int64_t> ids) {
  if (ids.empty()) return;
  const auto [least, greatest] = std::ranges::minmax(ids);
  least_ = least;
  const std::uint64_t extent =
      static_cast<std::uint64_t>(greatest) - static_cast<std::uint64_t>(least);
  if (extent < ids.size() * 4) {
    fillTable(ids, static_cast<std::size_t>(extent) + 1);
  } else {
    fillSlots(ids);
  }
}

void IdIndex::fillTable(std::span<const std::int64_t> ids, std::size_t extent) {
  table_.assign(extent, none);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    std::uint32_t& place = table_[static_cast<std::size_t>(static_cast<std::uint64_t>(ids[i]) -
                                                           static_cast<std::uint64_t>(least_))];
    if (place != none) continue;
    place = static_cast<std::uint32_t>(i);
    ++distinct_;
  }
}

void IdIndex::fillSlots(std::span<const std::int64_t> ids) {
  slots_.resize(std::bit_ceil(ids.size() * 2));
  for (std::size_t i = 0; i < ids.size(); ++i) {
    Slot& slot = slots_[slotOf(ids[i])];
    if (slot.place != none) continue;
    slot = {ids[i], static_cast<std::uint32_t>(i)};
    ++distinct_;
  }
}

std::size_t IdIndex::slotOf(std::int64_t id) const {
  // The finishing steps of splitmix64 (S. Vigna, 2015, public domain).
  auto mixed = static_cast<std::uint64_t>(id);
  mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
  mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
  mixed ^= mixed >> 31U;
  std::size_t slot = mixed & (slots_.size() - 1);
  while (slots_[slot].place != none && slots_[slot].id != id) slot = (slot + 1) & (slots_.size() - 1);
  return slot;
}

}  // namespace tern::detail
