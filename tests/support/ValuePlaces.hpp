// The values of a document counted through, so that one can be drawn by its number.
//
//   std::size_t n = below(countValues(document));
//   *nthValue(document, n) = 5;
//
// Ownership: borrows the document. Threads: as a reader of it. Fails: never.
#pragma once

#include <cstddef>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::test {

// With the document itself.
inline std::size_t countValues(const Value& value) {
  std::size_t count = 1;
  for (const Value& item : value.items()) count += countValues(item);
  for (const Value::Entry& entry : value.entries()) count += countValues(entry.value);
  return count;
}

// The value that comes as the n-th of all, in document order; n counts down on the way. Null when
// there are not so many.
inline Value* nthValue(Value& value, std::size_t& n) {
  if (n == 0) return &value;
  --n;
  for (Value& item : value.items()) {
    if (Value* found = nthValue(item, n)) return found;
  }
  for (Value::Entry& entry : value.entries()) {
    if (Value* found = nthValue(entry.value, n)) return found;
  }
  return nullptr;
}

}  // namespace tern::test
