// A static object that is never destroyed: other threads may still use it while the process ends.
//
//   static const Immortal table{Table("TernPath", ...)};
//   return table.value;
//
// Ownership: holds the object in itself. Threads: as what it holds. Fails: never.
#pragma once

#include <utility>

namespace tern::detail {

template <class T>
union Immortal {
  explicit Immortal(T object) : value(std::move(object)) {}
  // The object outlives its holder on purpose.
  ~Immortal() {}

  T value;
};

}  // namespace tern::detail
