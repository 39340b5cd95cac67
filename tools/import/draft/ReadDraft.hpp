// What a reader of building data gives back.
//
// Ownership: a plain value. Threads: plain values. Fails: by value, with one line.
#pragma once

#include <optional>
#include <string>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

struct [[nodiscard]] ReadDraft {
  Draft draft;
  // Why there is none.
  std::optional<std::string> error;
};

}  // namespace tern::imports
