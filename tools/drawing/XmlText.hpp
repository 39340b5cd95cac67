// Texts as XML takes them.
//
// Threads: free functions.
// Fails: never; bytes that are not UTF-8 and characters that XML forbids become U+FFFD.
#pragma once

#include <string>
#include <string_view>

namespace tern::drawing {

// The text as it stands between tags or within double quotes.
std::string escaped(std::string_view text);

}  // namespace tern::drawing
