// A static object that is never destroyed: other threads, and objects that end after `main`, may
// still use it while the process ends.
//
//   static const Immortal table{Table("TernPath", ...)};
//   return table.value;
//
// Ownership: holds the object in itself. Threads: as what it holds. Fails: never.
#pragma once

#include <utility>

namespace tern::inline v5::detail {

template <class T>
union Immortal {
  template <class... Arguments>
  explicit Immortal(Arguments&&... arguments) : value(std::forward<Arguments>(arguments)...) {}
  // The object outlives its holder on purpose.
  ~Immortal() {}

  T value;
};

template <class T>
Immortal(T) -> Immortal<T>;

}  // namespace tern::detail
