// A field of a record that holds either the plain value of the document or the record (or
// collection) that was made of it.
//
// Ownership: it shares the record. T may be an incomplete type.
// Threads: as a standard container: any number of readers, or one writer.
// Fails: reading the other alternative never does: it gives a null record, or an absent value.
//
//   if (floor.map) use(floor.map->svg);      // holds the record
//   floor.map.plain().isText();              // holds what the document gave
#pragma once

#include <memory>
#include <utility>
#include <variant>

#include "TernCoreKit/platform/Value.hpp"

namespace tern {

template <class T>
class Nested {
 public:
  Nested() noexcept = default;
  Nested(Value plain) noexcept : held_(std::move(plain)) {}  // NOLINT(google-explicit-constructor)
  Nested(std::shared_ptr<T> record) noexcept                 // NOLINT(google-explicit-constructor)
      : held_(std::move(record)) {}

  Nested& operator=(Value plain) noexcept {
    held_.template emplace<Value>(std::move(plain));
    return *this;
  }
  Nested& operator=(std::shared_ptr<T> record) noexcept {
    held_.template emplace<std::shared_ptr<T>>(std::move(record));
    return *this;
  }

  explicit operator bool() const noexcept { return get() != nullptr; }
  T* get() const noexcept {
    const auto* record = std::get_if<std::shared_ptr<T>>(&held_);
    return record != nullptr ? record->get() : nullptr;
  }
  // REQUIRES: a record is held.
  T* operator->() const noexcept { return get(); }

  const std::shared_ptr<T>& record() const noexcept {
    static const std::shared_ptr<T> none;
    const auto* record = std::get_if<std::shared_ptr<T>>(&held_);
    return record != nullptr ? *record : none;
  }

  const Value& plain() const noexcept {
    static const Value absent;
    const Value* plain = std::get_if<Value>(&held_);
    return plain != nullptr ? *plain : absent;
  }

  // Moves the plain value out; absent is left behind. What holds a record stays as it is.
  Value takePlain() noexcept {
    Value* plain = std::get_if<Value>(&held_);
    return plain != nullptr ? std::move(*plain) : Value();
  }

 private:
  std::variant<Value, std::shared_ptr<T>> held_;
};

}  // namespace tern
