// How wide a text will be in a sans-serif font that is only known where the picture is looked at:
// an estimate on the wide side, so that a text stays inside the space that was made for it.
//
// Widths and sizes are in pixels of the picture.
//
// Threads: free functions.
// Fails: never.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tern::drawing {

double textWidth(std::string_view text, double fontSize);

// The text, with its end replaced by an ellipsis when it is wider than that.
std::string fittedText(std::string_view text, double fontSize, double width);

// The text in lines broken at blanks; what does not go into so many lines ends in an ellipsis.
std::vector<std::string> wrappedText(std::string_view text, double fontSize, double width,
                                     std::size_t mostLines);

}  // namespace tern::drawing
