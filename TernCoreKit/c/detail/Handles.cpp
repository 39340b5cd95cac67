#include "TernCoreKit/c/detail/Handles.hpp"

#include <limits>
#include <stdexcept>
#include <utility>

#include "TernCoreKit/platform/detail/common/Immortal.hpp"

namespace tern::inline v5::detail {

std::uintptr_t Handles::add(Object object) {
  const MutexLock lock(mutex_);
  if (last_ == std::numeric_limits<std::uintptr_t>::max()) throw std::length_error("handles");
  objects_.emplace(last_ + 1, std::move(object));
  return ++last_;
}

std::size_t Handles::count() {
  const MutexLock lock(mutex_);
  return objects_.size();
}

Handles& handles() {
  static Immortal<Handles> table;
  return table.value;
}

}  // namespace tern::detail
