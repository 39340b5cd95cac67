// Where the library calls on threads of its own, is called by a C library, or has promised its
// caller an error: there the want of memory, threads or descriptors ends the work and not the
// process.
//
//   if (!attempt([&] { answer = decode(text); })) return fail(outOfMemory);
//
// Ownership: keeps nothing. Threads: any. Fails: by false; other exceptions pass.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace tern::inline v5::detail {

// What an error says then; so short that a std::string of it takes no memory.
inline constexpr const char* outOfMemory = "out of memory";

// Calls the function with the word.
bool attemptCall(void (*work)(void*), void* word);

// Runs the work; false when it broke off because the system had no more to give. What it had
// begun is then undone as far as its objects undo it.
template <class Work>
bool attempt(Work&& work) {
  using Called = std::remove_reference_t<Work>;
  const void* word = std::addressof(work);
  return attemptCall([](void* self) { (*static_cast<Called*>(self))(); }, const_cast<void*>(word));
}

// Breaks the attempt around this call off, for whoever is told by value that there is no memory.
[[noreturn]] void breakOffAttempt();

// A function that several share: copies of it take no memory.
template <class Function>
class Kept {
 public:
  // Takes the function over when there is memory to keep it, and leaves it alone otherwise.
  explicit Kept(Function&& function)
      : function_(std::make_shared<const Function>(std::move(function))) {}

  template <class... Arguments>
  void operator()(Arguments&&... arguments) const {
    (*function_)(std::forward<Arguments>(arguments)...);
  }
  const Function& get() const { return *function_; }

 private:
  std::shared_ptr<const Function> function_;
};

// Runs the first steps of what ends by a completion, which they are given as a Kept. When they
// break off, `fail` is called with the completion: so it is called in any case.
template <class Completion, class Run, class Fail>
void attemptWith(Completion completion, Run run, Fail fail) {
  std::optional<Kept<Completion>> kept;
  attempt([&] { kept.emplace(std::move(completion)); });
  if (!kept) return fail(completion);
  if (!attempt([&] { run(*kept); })) fail(kept->get());
}

}  // namespace tern::detail
