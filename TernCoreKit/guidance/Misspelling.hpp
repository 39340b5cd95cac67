/// @file
/// How far two texts lie apart in typing.
///
/// Ownership: borrows the texts. Threads: free functions without state; call them from any thread.
/// Fails: never; a byte that is no UTF-8 counts as U+FFFD.
#pragma once

#include <cstddef>
#include <string_view>

#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// Letters of the text, which is UTF-8.
TERN_API std::size_t lettersIn(std::string_view text);

/// Whether one letter less, one more, another one, or two neighbours that changed places make one
/// text of the other; also when they are the same.
TERN_API bool isOneSlipApart(std::string_view a, std::string_view b);

/// The least number of such slips, no two of them at one place; `most` when it is that or more.
TERN_API std::size_t slipsBetween(std::string_view a, std::string_view b, std::size_t most);

}  // namespace tern
