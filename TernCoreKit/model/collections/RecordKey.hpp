#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// The key under which a collection keeps a record: an integer or a text. Eight bytes, of which
/// there are as many as records; texts and the few integers beyond 63 bits lie elsewhere.
///
/// Ownership: a value. Threads: as a standard container. Fails: never.
///
///     RecordKey(12).integer();       // 12
///     RecordKey("west").text();      // "west"
class TERN_API RecordKey {
 public:
  /// REQUIRES: an integer or a text.
  RecordKey(Value key);  // NOLINT(google-explicit-constructor)
  /// The same key.
  RecordKey(const RecordKey& other) : RecordKey(other.value()) {}
  /// Leaves the integer 0 behind.
  RecordKey(RecordKey&& other) noexcept : bits_(std::exchange(other.bits_, zero)) {}
  /// The other key from here on.
  RecordKey& operator=(RecordKey other) noexcept {
    std::swap(bits_, other.bits_);
    return *this;
  }
  ~RecordKey() { delete elsewhere(); }

  /// Whether it is an integer.
  bool isInteger() const noexcept { return elsewhere() == nullptr || elsewhere()->isInteger(); }
  /// Whether it is a text.
  bool isText() const noexcept { return !isInteger(); }
  /// 0 for a text.
  std::int64_t integer() const noexcept {
    return elsewhere() == nullptr ? bits_ >> 1 : elsewhere()->integer();
  }
  /// Empty for an integer.
  std::string_view text() const noexcept {
    return elsewhere() == nullptr ? std::string_view() : elsewhere()->text();
  }
  /// The key as a value.
  Value value() const { return elsewhere() == nullptr ? Value(integer()) : *elsewhere(); }
  /// The text, or the integer in decimal.
  std::string printed() const { return value().printed(); }

  /// Keys of one kind with the same integer or text. `Key` is another key, or a value.
  template <class Key>
  bool operator==(const Key& other) const noexcept {
    return isInteger() ? other.isInteger() && integer() == other.integer()
                       : other.isText() && text() == other.text();
  }

 private:
  static constexpr std::int64_t zero = 1;

  const Value* elsewhere() const noexcept {
    return (bits_ & 1) != 0 ? nullptr
                            : reinterpret_cast<const Value*>(static_cast<std::intptr_t>(bits_));
  }

  // An integer twice and one more; else the address of the value, which is even.
  std::int64_t bits_ = zero;
};

static_assert(sizeof(RecordKey) == 8);

}  // namespace tern
