// A list of dynamic values that are nearly all numbers: eight bytes for each of these.
//
// A double stands as it is. Integers and the numbers of the few other values hide in the bit
// patterns of negative NaNs, which no document can write.
//
// Ownership: owns its values. Threads: as a standard container. Fails: never.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5::detail {

class ValueColumn {
 public:
  void reserve(std::size_t count) { words_.reserve(count); }
  std::size_t size() const { return words_.size(); }
  void append(const Value& value) { words_.push_back(wordOf(value)); }

  Value operator[](std::size_t at) const {
    const std::uint64_t word = words_[at];
    if (word < integers) return std::bit_cast<double>(word);
    return word < others ? Value(integerIn(word)) : others_[word - others];
  }
  std::int64_t integer(std::size_t at) const {
    const std::uint64_t word = words_[at];
    return word >= integers && word < others ? integerIn(word) : (*this)[at].integer();
  }
  double number(std::size_t at) const {
    const std::uint64_t word = words_[at];
    return word < integers ? std::bit_cast<double>(word) : (*this)[at].number();
  }

 private:
  static constexpr std::uint64_t integers = std::uint64_t{0xfff8} << 48U;
  static constexpr std::uint64_t others = std::uint64_t{0xfffc} << 48U;
  // Added to an integer, so that it is not negative.
  static constexpr std::int64_t bias = std::int64_t{1} << 49U;

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

  std::vector<std::uint64_t> words_;
  std::vector<Value> others_;
};

}  // namespace tern::detail
