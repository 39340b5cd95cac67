// Numbers as drawings write them: in lists, with blanks or commas between them or with nothing.
//
// Threads: free functions. Fails: by none.
//
//   std::string_view text = "10,20-5";
//   while (const auto number = takeNumber(text)) ...  // 10, 20, -5
#pragma once

#include <optional>
#include <string_view>

namespace tern::picture {

// Takes the number in front of the text; none when there is none or it is absurd.
std::optional<double> takeNumber(std::string_view& text);

// The number in front of the text; 0 without one.
inline double numberIn(std::string_view text) { return takeNumber(text).value_or(0); }

}  // namespace tern::picture
