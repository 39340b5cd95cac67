#include "TernCoreKit/model/collections/RecordMap.hpp"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "TernCoreKit/platform/Json.hpp"

namespace tern::inline v5 {

namespace {

// Keys that crowd together farther than this in a table at most two thirds full are no accident of
// neighbouring ids: the table then spreads them by a secret of its own.
constexpr std::size_t longestRun = 128;

std::uint64_t scatter(std::uint64_t bits, std::uint64_t seed) {
  bits ^= seed;
  bits = (bits ^ bits >> 32U) * 0xd6e8feb86659fd93U + seed;
  bits = (bits ^ bits >> 29U) * 0x9e3779b97f4a7c15U;
  return bits ^ bits >> 32U;
}

std::uint64_t hashText(std::string_view text, std::uint64_t seed) {
  std::uint64_t hash = seed + text.size();
  while (!text.empty()) {
    std::uint64_t chunk = 0;
    const std::size_t taken = std::min(text.size(), sizeof chunk);
    std::memcpy(&chunk, text.data(), taken);
    hash = scatter(hash ^ chunk, seed);
    text.remove_prefix(taken);
  }
  return hash;
}

// Decimal without a leading zero or plus, so that printing the integer gives the text back.
bool isCanonicalInteger(std::string_view text) {
  if (text == "0") return true;
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && text[0] >= '1' && text[0] <= '9';
}

Value keyOfText(std::string_view text) {
  std::int64_t integer = 0;
  const char* end = text.data() + text.size();
  if (isCanonicalInteger(text)) {
    const auto [rest, error] = std::from_chars(text.data(), end, integer);
    if (error == std::errc() && rest == end) return integer;
  }
  return text;
}

std::size_t slotsFor(std::size_t count) { return std::bit_ceil(count + count / 2 + 1); }

}  // namespace

Value RecordMap::keyOf(const Value& id) {
  if (id.isInteger()) return id.integer();
  if (id.isText()) return keyOfText(id.text());
  if (id.isList() || id.isMap()) return Value(encodeJson(id, JsonLayout::compact));
  return keyOfText(id.printed());
}

template <class Key>
std::size_t RecordMap::firstSlot(const Key& key) const noexcept {
  std::uint64_t hash = 0;
  if (key.isText()) {
    hash = hashText(key.text(), seed_);
  } else {
    hash = static_cast<std::uint64_t>(key.integer());
    if (seed_ != 0) hash = scatter(hash, seed_);
  }
  return static_cast<std::size_t>(hash) & (slots_.size() - 1);
}

// The slot of the key or, when it is not there, the free one where it belongs.
template <class Key>
std::size_t RecordMap::slotOf(const Key& key) const noexcept {
  std::size_t slot = firstSlot(key);
  while (slots_[slot] != 0 && !(entries_[slots_[slot] - 1].key == key)) {
    slot = (slot + 1) & (slots_.size() - 1);
  }
  return slot;
}

// One tight loop over all keys lets the processor fetch many slots at once, which making the
// records in between would prevent.
RecordMap::RecordMap(std::vector<Entry> entries) : entries_(std::move(entries)) {
  rebuildIndex(slotsFor(entries_.size()), 0);
  std::size_t kept = 0;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (i != kept) entries_[kept] = std::move(entries_[i]);
    if (admit(kept)) ++kept;
  }
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(kept), entries_.end());
}

void RecordMap::makeRoom(std::size_t more) {
  const std::size_t count = entries_.size();
  // One that takes the place of another needs a place of its own meanwhile.
  const std::size_t most = count + more + 1;
  if (most > entries_.capacity()) entries_.reserve(std::max(most, 2 * count));
  if (slotsFor(most) > slots_.size()) rebuildIndex(slotsFor(2 * most), count);
}

void RecordMap::set(Value key, std::shared_ptr<TernBaseModel> record) {
  const std::size_t count = entries_.size();
  if (slotsFor(count + 1) > slots_.size()) rebuildIndex(slotsFor(2 * count + 2), count);
  entries_.push_back({std::move(record), std::move(key)});
  if (!admit(count)) entries_.pop_back();
}

bool RecordMap::admit(std::size_t position) {
  Entry& entry = entries_[position];
  const std::size_t slot = slotOf(entry.key);
  if (slots_[slot] != 0) {
    entries_[slots_[slot] - 1].record = std::move(entry.record);
    return false;
  }
  slots_[slot] = static_cast<std::uint32_t>(position + 1);
  const std::size_t run = (slot - firstSlot(entry.key)) & (slots_.size() - 1);
  if (run > longestRun && seed_ == 0) {
    seed_ = scatter(reinterpret_cast<std::uintptr_t>(slots_.data()), position) | 1U;
    rebuildIndex(slots_.size(), position + 1);
  }
  return true;
}

const RecordMap::Entry* RecordMap::find(const Value& key) const noexcept {
  if (slots_.empty()) return nullptr;
  const std::uint32_t position = slots_[slotOf(key)];
  return position != 0 ? &entries_[position - 1] : nullptr;
}

void RecordMap::rebuildIndex(std::size_t slotCount, std::size_t count) {
  slots_.assign(slotCount, 0);
  for (std::size_t position = 0; position < count; ++position) {
    std::size_t slot = firstSlot(entries_[position].key);
    while (slots_[slot] != 0) slot = (slot + 1) & (slotCount - 1);
    slots_[slot] = static_cast<std::uint32_t>(position + 1);
  }
}

}  // namespace tern
