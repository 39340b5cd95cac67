// Throwing and catching on WebAssembly, whose packaged C++ library is built without: the functions
// that the compiler calls (with -fwasm-exceptions), after the Itanium C++ ABI. What is left out is
// what this library does not do: exception specifications, std::exception_ptr, and foreign
// exceptions, which pass through.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <typeinfo>

namespace {

// On this machine a destructor returns its object.
using Destructor = void* (*)(void*);

// Lies before each object that is thrown, and is what the engine hands around.
struct alignas(16) Thrown {
  const std::type_info* type;
  Destructor destroy;
  // What was being handled when this was caught.
  Thrown* outer;
  // How many handlers are at it; negative when one of them has thrown it again.
  int handlers;
  // The part of the object that the handler takes.
  void* caught;
};

void* objectOf(Thrown* thrown) { return thrown + 1; }
Thrown* thrownOf(void* object) { return static_cast<Thrown*>(object) - 1; }

// What is being handled, the innermost first.
Thrown* handled = nullptr;

// For what is thrown when there is no memory left.
struct alignas(16) Spare {
  char bytes[512];
};
Spare spares[8];
bool isSpareTaken[8];

void* takeSpare(std::size_t size) {
  for (std::size_t i = 0; size <= sizeof(Spare) && i < 8; ++i) {
    if (isSpareTaken[i]) continue;
    isSpareTaken[i] = true;
    return &spares[i];
  }
  std::terminate();
}

void freeThrown(void* memory) {
  auto* const spare = static_cast<Spare*>(memory);
  if (spare >= spares && spare < spares + 8) {
    isSpareTaken[spare - spares] = false;
  } else {
    std::free(memory);
  }
}

[[noreturn]] void raise(Thrown* thrown) { __builtin_wasm_throw(0, thrown); }

// How libc++abi's type_info objects look: whether a handler for this type takes such an object, and
// which part of it.
class CatchableType : public std::type_info {
 public:
  virtual void noop1() const;
  virtual void noop2() const;
  virtual bool can_catch(const CatchableType* thrown, void*& object) const = 0;
};

// A table of what a function handles where, as the compiler writes it.
class Reader {
 public:
  explicit Reader(const std::uint8_t* at) : at_(at) {}

  const std::uint8_t* at() const { return at_; }
  std::uint8_t byte() { return *at_++; }
  std::uintptr_t number() {
    std::uintptr_t value = 0;
    for (unsigned shift = 0;; shift += 7) {
      const std::uint8_t part = byte();
      value |= static_cast<std::uintptr_t>(part & 0x7FU) << shift;
      if ((part & 0x80U) == 0) return value;
    }
  }
  std::intptr_t signedNumber() {
    std::uintptr_t value = 0;
    for (unsigned shift = 0;;) {
      const std::uint8_t part = byte();
      value |= static_cast<std::uintptr_t>(part & 0x7FU) << shift;
      shift += 7;
      if ((part & 0x80U) != 0) continue;
      if ((part & 0x40U) != 0 && shift < 32) value |= ~std::uintptr_t{0} << shift;
      return static_cast<std::intptr_t>(value);
    }
  }

 private:
  const std::uint8_t* at_;
};

constexpr std::uint8_t leftOut = 0xFF;

struct HandlerTable {
  explicit HandlerTable(const std::uint8_t* table, std::uintptr_t place) {
    Reader reader(table);
    if (reader.byte() != leftOut) std::terminate();  // places are numbered, not addresses
    if (reader.byte() != leftOut) {
      const std::uintptr_t distance = reader.number();
      types = reader.at() + distance;
    }
    reader.byte();  // how numbers are written: in one way only
    const std::uintptr_t bytes = reader.number();
    const std::uint8_t* const actionsBegin = reader.at() + bytes;
    for (std::uintptr_t i = 0; i <= place; ++i) {
      reader.number();
      action = reader.number();
    }
    actions = actionsBegin;
  }

  const std::type_info* type(std::intptr_t number) const {
    const std::type_info* found = nullptr;
    std::memcpy(&found, types - number * static_cast<std::intptr_t>(sizeof found), sizeof found);
    return found;
  }

  const std::uint8_t* types = nullptr;
  const std::uint8_t* actions = nullptr;
  std::uintptr_t action = 0;
};

bool takes(const std::type_info* wanted, Thrown* thrown) {
  void* object = objectOf(thrown);
  if (wanted != nullptr && !static_cast<const CatchableType*>(wanted)->can_catch(
                               static_cast<const CatchableType*>(thrown->type), object)) {
    return false;
  }
  thrown->caught = object;
  return true;
}

// The number of the type whose handler takes it; 0 where there is none, but perhaps work to do on
// the way out.
std::uintptr_t handlerOf(const HandlerTable& table, Thrown* thrown) {
  if (table.action == 0) return 0;
  const std::uint8_t* at = table.actions + table.action - 1;
  for (;;) {
    Reader reader(at);
    const std::intptr_t type = reader.signedNumber();
    const std::uint8_t* const from = reader.at();
    const std::intptr_t next = reader.signedNumber();
    if (type < 0) std::terminate();
    if (type > 0 && takes(table.type(type), thrown)) return static_cast<std::uintptr_t>(type);
    if (next == 0) return 0;
    at = from + next;
  }
}

}  // namespace

extern "C" {

// Where the compiler says which place of which function is left, and reads which handler it is.
struct LandingPad {
  std::uintptr_t place;
  const std::uint8_t* table;
  std::uintptr_t handler;
};
thread_local LandingPad __wasm_lpad_context = {};

int _Unwind_CallPersonality(void* exception) {
  LandingPad& pad = __wasm_lpad_context;
  pad.handler = 0;
  if (pad.table != nullptr) {
    pad.handler = handlerOf(HandlerTable(pad.table, pad.place), static_cast<Thrown*>(exception));
  }
  return 0;
}

// Named by each function that handles something, and called by none.
int __gxx_wasm_personality_v0() { std::terminate(); }

void* __cxa_allocate_exception(std::size_t size) noexcept {
  const std::size_t whole = sizeof(Thrown) + size;
  void* memory = std::malloc(whole);
  if (memory == nullptr) memory = takeSpare(whole);
  std::memset(memory, 0, whole);
  return objectOf(static_cast<Thrown*>(memory));
}

void __cxa_free_exception(void* object) noexcept { freeThrown(thrownOf(object)); }

[[noreturn]] void __cxa_throw(void* object, std::type_info* type, Destructor destroy) {
  Thrown* const thrown = thrownOf(object);
  thrown->type = type;
  thrown->destroy = destroy;
  raise(thrown);
}

void* __cxa_get_exception_ptr(void* exception) noexcept {
  return static_cast<Thrown*>(exception)->caught;
}

void* __cxa_begin_catch(void* exception) noexcept {
  auto* const thrown = static_cast<Thrown*>(exception);
  thrown->handlers = (thrown->handlers < 0 ? -thrown->handlers : thrown->handlers) + 1;
  if (handled != thrown) {
    thrown->outer = handled;
    handled = thrown;
  }
  return thrown->caught;
}

void __cxa_end_catch() {
  Thrown* const thrown = handled;
  if (thrown == nullptr) return;
  if (thrown->handlers < 0) {
    if (++thrown->handlers == 0) handled = thrown->outer;
  } else if (--thrown->handlers == 0) {
    handled = thrown->outer;
    if (thrown->destroy != nullptr) thrown->destroy(objectOf(thrown));
    freeThrown(thrown);
  }
}

[[noreturn]] void __cxa_rethrow() {
  if (handled == nullptr) std::terminate();
  handled->handlers = -handled->handlers;
  raise(handled);
}

}  // extern "C"
