// How far two folded names lie apart in typing.
//
// Ownership: borrows the texts. Threads: any. Fails: never.
#pragma once

#include <cstddef>
#include <string_view>

namespace tern::inline v5::detail {

// Letters of the text, which is UTF-8.
std::size_t lettersIn(std::string_view text);

// Whether one letter less, one more, another one, or two neighbours that changed places make one
// text of the other; also when they are the same.
bool isOneSlipApart(std::string_view a, std::string_view b);

// The least number of such slips, no two of them at one place; `most` when it is that or more.
std::size_t slipsBetween(std::string_view a, std::string_view b, std::size_t most);

}  // namespace tern::detail
