#include "TernCoreKit/wayfinding/detail/IdIndex.hpp"

#include <algorithm>
#include <bit>

namespace tern::inline v5::detail {

namespace {

// Ids that lie farther from their home than this in a table at most half full are no accident.
constexpr std::size_t farthest = 128;

}  // namespace

IdIndex::IdIndex(std::span<const std::int64_t> ids) {
  if (ids.empty()) return;
  const auto [least, greatest] = std::ranges::minmax(ids);
  least_ = least;
  const std::uint64_t extent =
      static_cast<std::uint64_t>(greatest) - static_cast<std::uint64_t>(least);
  if (extent < ids.size() * 4) {
    fillTable(ids, static_cast<std::size_t>(extent) + 1);
  } else if (!fillSlots(ids)) {
    sortSlots(ids);
  }
}

void IdIndex::fillTable(std::span<const std::int64_t> ids, std::size_t extent) {
  table_.assign(extent, none);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    std::uint32_t& index = table_[static_cast<std::size_t>(static_cast<std::uint64_t>(ids[i]) -
                                                           static_cast<std::uint64_t>(least_))];
    if (index != none) continue;
    index = static_cast<std::uint32_t>(i);
    ++distinct_;
  }
}

bool IdIndex::fillSlots(std::span<const std::int64_t> ids) {
  slots_.resize(std::bit_ceil(ids.size() * 2));
  for (std::size_t i = 0; i < ids.size(); ++i) {
    const std::size_t at = slotOf(ids[i]);
    if (((at - homeOf(ids[i])) & (slots_.size() - 1)) > farthest) return false;
    if (slots_[at].index != none) continue;
    slots_[at] = {ids[i], static_cast<std::uint32_t>(i)};
    ++distinct_;
  }
  return true;
}

void IdIndex::sortSlots(std::span<const std::int64_t> ids) {
  isSorted_ = true;
  slots_.clear();
  for (std::size_t i = 0; i < ids.size(); ++i) {
    slots_.push_back({ids[i], static_cast<std::uint32_t>(i)});
  }
  std::ranges::stable_sort(slots_, {}, &Slot::id);
  const auto isSameId = [](const Slot& a, const Slot& b) { return a.id == b.id; };
  slots_.erase(std::unique(slots_.begin(), slots_.end(), isSameId), slots_.end());
  distinct_ = slots_.size();
}

std::size_t IdIndex::homeOf(std::int64_t id) const {
  // The finishing steps of splitmix64 (S. Vigna, 2015, public domain).
  auto mixed = static_cast<std::uint64_t>(id);
  mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
  mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
  mixed ^= mixed >> 31U;
  return mixed & (slots_.size() - 1);
}

std::size_t IdIndex::slotOf(std::int64_t id) const {
  std::size_t slot = homeOf(id);
  while (slots_[slot].index != none && slots_[slot].id != id)
    slot = (slot + 1) & (slots_.size() - 1);
  return slot;
}

std::uint32_t IdIndex::findSorted(std::int64_t id) const {
  const auto found = std::ranges::lower_bound(slots_, id, {}, &Slot::id);
  return found != slots_.end() && found->id == id ? found->index : none;
}

}  // namespace tern::detail
