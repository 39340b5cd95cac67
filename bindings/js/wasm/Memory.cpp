// Memory that says by std::bad_alloc that there is no more. The standard library for WebAssembly is
// packaged without exceptions, and gives a null pointer there, which nobody looks at.
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

void* orThrow(void* memory) {
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* aligned(std::size_t size, std::align_val_t alignment) noexcept {
  const auto step = static_cast<std::size_t>(alignment);
  const std::size_t rounded = (size + step - 1) / step * step;
  return rounded >= size ? std::aligned_alloc(step, rounded > 0 ? rounded : step) : nullptr;
}

}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size > 0 ? size : 1);
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void* operator new(std::size_t size) { return orThrow(operator new(size, std::nothrow)); }
void* operator new[](std::size_t size) { return operator new(size); }

void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return aligned(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return aligned(size, alignment);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return orThrow(aligned(size, alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return operator new(size, alignment);
}
