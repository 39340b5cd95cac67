// How the C++ library ends a program that cannot go on: without words, which would bring all of
// `printf` along. JavaScript says that the library has stopped.
#include <version>

extern "C" [[noreturn]] void abort_message(const char* /*format*/, ...) { __builtin_trap(); }

namespace std {
inline namespace __2 {

[[noreturn]] void __libcpp_verbose_abort(const char* /*format*/, ...) { __builtin_trap(); }

}  // namespace __2
}  // namespace std
