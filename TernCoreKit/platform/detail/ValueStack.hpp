// The values of a document that wait for the list or map they lie in to end.
//
// Ownership: owns its values until a container takes them.
// Threads: one at a time.
// Fails: std::bad_alloc when memory runs out.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>
#include <utility>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

class ValueStack {
 public:
  ValueStack() = default;
  ValueStack(const ValueStack&) = delete;
  ValueStack& operator=(const ValueStack&) = delete;
  ~ValueStack() {
    std::destroy(first_, top_);
    std::free(first_);
  }

  std::size_t size() const { return static_cast<std::size_t>(top_ - first_); }
  std::span<Value> from(std::size_t start) { return {first_ + start, size() - start}; }

  // Inlined even where a compiler would rather not: a document's values all pass here.
  template <class... Arguments>
  [[gnu::always_inline]] void push(Arguments&&... arguments) {
    if (top_ == end_) grow();
    new (top_) Value(std::forward<Arguments>(arguments)...);
    ++top_;
  }

  // Puts a list of all values from `start` on in their stead.
  void makeList(std::size_t start) {
    if (top_ == end_) grow();
    replace(start, Value::listOf, size() - start);
  }

  // The same with a map of so many keys and values; those behind them must be absent.
  void makeMap(std::size_t start, std::size_t count) {
    if (top_ == end_) grow();
    replace(start, Value::mapOf, count);
  }

 private:
  // The container is made where it stays: a move would wait for the two stores that it is.
  void replace(std::size_t start, Value (*made)(std::span<Value>), std::size_t count) {
    Value* const container = first_ + start;
    new (container) Value(made(std::span(container, count)));
    top_ = container + 1;
  }

  // Values may be carried elsewhere as bytes, which lets the system move pages instead of copying.
  void grow() {
    const std::size_t used = size();
    const std::size_t capacity = std::max<std::size_t>(64, used * 2);
    void* grown = std::realloc(static_cast<void*>(first_), capacity * sizeof(Value));
    if (grown == nullptr) throw std::bad_alloc();
    first_ = static_cast<Value*>(grown);
    top_ = first_ + used;
    end_ = first_ + capacity;
  }

  Value* first_ = nullptr;
  Value* top_ = nullptr;
  Value* end_ = nullptr;
};

}  // namespace tern
