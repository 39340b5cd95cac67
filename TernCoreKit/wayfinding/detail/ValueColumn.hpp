// A list of dynamic values that are nearly all numbers: eight bytes for each of these, and four as
// long as all are integers such as ids are.
//
// A double stands as it is. Integers and the numbers of the few other values hide in the bit
// patterns of negative NaNs, which no document can write.
//
// Ownership: owns its values. Threads: as a standard container. Fails: never.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5::detail {

class ValueColumn {
 public:
  void reserve(std::size_t count) { expected_ = count; }
  std::size_t size() const { return ids_.size() + words_.size(); }

  void append(const Value& value) {
    const std::uint64_t word = wordOf(value);
    if (words_.empty() && isId(word)) {
      if (ids_.empty()) ids_.reserve(expected_);
      ids_.push_back(static_cast<std::uint32_t>(word - firstId));
      return;
    }
    if (words_.empty()) widen();
    words_.push_back(word);
  }

  Value operator[](std::size_t at) const {
    const std::uint64_t word = wordAt(at);
    if (word < integers) return std::bit_cast<double>(word);
    return word < others ? Value(integerIn(word)) : others_[word - others];
  }
  std::int64_t integer(std::size_t at) const {
    const std::uint64_t word = wordAt(at);
    return word >= integers && word < others ? integerIn(word) : (*this)[at].integer();
  }
  double number(std::size_t at) const {
    const std::uint64_t word = wordAt(at);
    return word < integers ? std::bit_cast<double>(word) : (*this)[at].number();
  }

 private:
  static constexpr std::uint64_t integers = std::uint64_t{0xfff8} << 48U;
  static constexpr std::uint64_t others = std::uint64_t{0xfffc} << 48U;
  // Added to an integer, so that it is not negative.
  static constexpr std::int64_t bias = std::int64_t{1} << 49U;
  // The word of the integer 0.
  static constexpr std::uint64_t firstId = integers + static_cast<std::uint64_t>(bias);

  static bool isId(std::uint64_t word) {
    return word >= firstId && word < firstId + (std::uint64_t{1} << 32U);
  }
  std::uint64_t wordAt(std::size_t at) const {
    return ids_.empty() ? words_[at] : firstId + ids_[at];
  }

  // Writes all that is there as words.
  void widen() {
    words_.reserve(std::max(expected_, ids_.size() + 1));
    for (const std::uint32_t id : ids_) words_.push_back(firstId + id);
    ids_ = std::vector<std::uint32_t>();
  }

  static std::int64_t integerIn(std::uint64_t word) {
    return static_cast<std::int64_t>(word - integers) - bias;
  }

  std::uint64_t wordOf(const Value& value) {
    if (value.isInteger() && value.integer() >= -bias && value.integer() < bias) {
      return integers + static_cast<std::uint64_t>(value.integer() + bias);
    }
    const bool isDouble = value.isNumber() && !value.isInteger();
    const auto bits = std::bit_cast<std::uint64_t>(value.number());
    if (isDouble && bits < integers) return bits;
    others_.push_back(value);
    return others + others_.size() - 1;
  }

  std::size_t expected_ = 0;
  // One of the two is empty.
  std::vector<std::uint32_t> ids_;
  std::vector<std::uint64_t> words_;
  std::vector<Value> others_;
};

}  // namespace tern::detail
