// Fits words into a room: how they are cut into lines and how large they are written.
//
// Threads: free functions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tern::generate {

struct Label {
  // Empty when the words do not fit at the smallest size.
  std::vector<std::string> lines;
  // In pixels; lines stand `labelLinePx(size)` apart.
  int size = 0;
};

inline constexpr int labelLinePx(int size) { return size * 6 / 5; }

// How wide a text is in a common sans-serif face, at the most.
int textWidthPx(std::string_view text, int size);

// The largest size from `most` down to `least` at which the words, broken at spaces, fit.
Label fitLabel(std::string_view words, int widthPx, int heightPx, int least, int most);

}  // namespace tern::generate
