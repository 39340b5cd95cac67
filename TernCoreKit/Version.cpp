#include "TernCoreKit/Version.hpp"

static_assert(TERN_VERSION_MAJOR == 5, "the inline namespace bears the major version: rename it");

// The text of a macro's value.
#define TERN_TEXT_OF(word) #word
#define TERN_VERSION_TEXT(major, minor, patch) \
  TERN_TEXT_OF(major) "." TERN_TEXT_OF(minor) "." TERN_TEXT_OF(patch)

namespace tern::inline v5 {

std::string_view version() noexcept {
  return TERN_VERSION_TEXT(TERN_VERSION_MAJOR, TERN_VERSION_MINOR, TERN_VERSION_PATCH);
}

}  // namespace tern
