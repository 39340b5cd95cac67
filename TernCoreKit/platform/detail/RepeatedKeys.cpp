#include "TernCoreKit/platform/detail/RepeatedKeys.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

namespace tern::inline v5 {
namespace {

// Counts keys by a hash of few bits, so that most keys that occur once are known at once. Keys made
// to collide cost time only: that of sorting them.
class KeyFilter {
 public:
  explicit KeyFilter(std::size_t keys) {
    if (keys * slotsPerKey > small_.size()) {
      large_.resize(std::bit_ceil(keys * slotsPerKey));
      slots_ = large_;
    }
  }

  // Whether the slot of the key was empty.
  bool add(std::string_view key) {
    std::uint8_t& count = slots_[slot(key)];
    if (count < 2) ++count;
    return count == 1;
  }

  bool mayRepeat(std::string_view key) const { return slots_[slot(key)] == 2; }

 private:
  static constexpr std::size_t slotsPerKey = 8;

  std::size_t slot(std::string_view key) const {
    std::uint64_t hash = key.size();
    while (key.size() >= 8) {
      std::uint64_t word = 0;
      std::memcpy(&word, key.data(), sizeof word);
      hash = mixed(hash ^ word);
      key.remove_prefix(sizeof word);
    }
    std::uint64_t word = 0;
    std::memcpy(&word, key.data(), key.size());
    return mixed(hash ^ word) & (slots_.size() - 1);
  }

  static std::uint64_t mixed(std::uint64_t hash) {
    hash *= 0x9E3779B97F4A7C15U;
    return hash ^ hash >> 32U;
  }

  std::array<std::uint8_t, 256> small_ = {};
  std::vector<std::uint8_t> large_;
  std::span<std::uint8_t> slots_ = small_;
};

// The positions of the keys that may occur twice.
std::vector<std::size_t> suspects(std::span<const Value> keysAndValues) {
  KeyFilter filter(keysAndValues.size() / 2);
  bool allAlone = true;
  for (std::size_t i = 0; i < keysAndValues.size(); i += 2) {
    allAlone &= filter.add(keysAndValues[i].text());
  }
  std::vector<std::size_t> result;
  for (std::size_t i = 0; !allAlone && i < keysAndValues.size(); i += 2) {
    if (filter.mayRepeat(keysAndValues[i].text())) result.push_back(i);
  }
  return result;
}

// Gives the first of equal keys the value of the last and makes the others absent.
void mergeRepeated(std::span<Value> keysAndValues, std::vector<std::size_t> positions) {
  const auto key = [&](std::size_t position) { return keysAndValues[position].text(); };
  std::ranges::sort(positions, {},
                    [&](std::size_t position) { return std::pair(key(position), position); });
  std::size_t first = positions.front();
  for (const std::size_t position : std::span(positions).subspan(1)) {
    if (key(position) != key(first)) {
      first = position;
      continue;
    }
    keysAndValues[first + 1] = std::move(keysAndValues[position + 1]);
    keysAndValues[position] = Value();
  }
}

std::size_t closeGaps(std::span<Value> keysAndValues) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < keysAndValues.size(); i += 2) {
    if (keysAndValues[i].isAbsent()) continue;
    if (kept != i) {
      keysAndValues[kept] = std::move(keysAndValues[i]);
      keysAndValues[kept + 1] = std::move(keysAndValues[i + 1]);
    }
    kept += 2;
  }
  return kept;
}

}  // namespace

std::size_t removeRepeatedKeys(std::span<Value> keysAndValues) {
  std::vector<std::size_t> positions = suspects(keysAndValues);
  if (positions.empty()) return keysAndValues.size();
  mergeRepeated(keysAndValues, std::move(positions));
  return closeGaps(keysAndValues);
}

}  // namespace tern
