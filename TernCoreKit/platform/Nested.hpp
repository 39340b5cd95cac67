#pragma once

#include <memory>
#include <utility>
#include <variant>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// A field of a record that holds either the plain value of the document or the record (or
/// collection) that was made of it.
///
/// Ownership: it shares the record. T may be an incomplete type.
/// Threads: as a standard container: any number of readers, or one writer.
/// Fails: reading the other alternative never does: it gives a null record, or an absent value.
///
///     if (floor.map) use(floor.map->svg);      // holds the record
///     floor.map.plain().isText();              // holds what the document gave
template <class T>
class Nested {
 public:
  Nested() noexcept = default;
  /// Holds a plain value.
  Nested(Value plain) noexcept : held_(std::move(plain)) {}  // NOLINT(google-explicit-constructor)
  /// Holds a record, or null.
  Nested(std::shared_ptr<T> record) noexcept  // NOLINT(google-explicit-constructor)
      : held_(std::move(record)) {}

  /// Holds a plain value from here on.
  Nested& operator=(Value plain) noexcept {
    held_.template emplace<Value>(std::move(plain));
    return *this;
  }
  /// Holds a record, or null, from here on.
  Nested& operator=(std::shared_ptr<T> record) noexcept {
    held_.template emplace<std::shared_ptr<T>>(std::move(record));
    return *this;
  }

  /// Whether a record is held.
  explicit operator bool() const noexcept { return get() != nullptr; }
  /// The record; null when there is none.
  T* get() const noexcept {
    const auto* record = std::get_if<std::shared_ptr<T>>(&held_);
    return record != nullptr ? record->get() : nullptr;
  }
  /// The record.
  /// REQUIRES: a record is held.
  T* operator->() const noexcept { return get(); }

  /// The record, to be shared; null when there is none.
  const std::shared_ptr<T>& record() const noexcept {
    static const std::shared_ptr<T> none;
    const auto* record = std::get_if<std::shared_ptr<T>>(&held_);
    return record != nullptr ? *record : none;
  }

  /// The plain value; absent when a record is held.
  const Value& plain() const noexcept {
    static const Value absent;
    const Value* plain = std::get_if<Value>(&held_);
    return plain != nullptr ? *plain : absent;
  }

  /// Moves the plain value out; absent is left behind. What holds a record stays as it is.
  Value takePlain() noexcept {
    Value* plain = std::get_if<Value>(&held_);
    return plain != nullptr ? std::move(*plain) : Value();
  }

 private:
  std::variant<Value, std::shared_ptr<T>> held_;
};

}  // namespace tern
