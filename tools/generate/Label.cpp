#include "tools/generate/Label.hpp"

#include <algorithm>

#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::generate {

namespace {

// In hundredths of the font size, on the wide side.
int widthOf(char letter) {
  constexpr std::string_view narrow = "fijlrtI '.,-()";
  constexpr std::string_view wide = "mwMWGOQ&";
  if (narrow.find(letter) != std::string_view::npos) return 40;
  return wide.find(letter) != std::string_view::npos ? 92 : 66;
}

// The next word, an "&" together with what follows it.
std::string takeWord(std::string_view& words) {
  std::size_t space = words.find(' ');
  if (words.substr(0, space) == "&" && space != std::string_view::npos) {
    space = words.find(' ', space + 1);
  }
  std::string word(words.substr(0, space));
  words.remove_prefix(std::min(word.size() + 1, words.size()));
  return word;
}

std::vector<std::string> brokenLines(std::string_view words, int widthPx, int size) {
  std::vector<std::string> lines;
  while (!words.empty()) {
    const std::string word = takeWord(words);
    if (!lines.empty() && textWidthPx(lines.back() + " " + word, size) <= widthPx) {
      lines.back() += " " + word;
    } else {
      lines.push_back(word);
    }
  }
  return lines;
}

bool fits(const std::vector<std::string>& lines, int widthPx, int heightPx, int size) {
  if (static_cast<int>(lines.size()) * labelLinePx(size) > heightPx) return false;
  for (const std::string& line : lines) {
    if (textWidthPx(line, size) > widthPx) return false;
  }
  return true;
}

}  // namespace

int textWidthPx(std::string_view text, int size) {
  int hundredths = 0;
  for (char letter : text) hundredths += continuesUtf8(letter) ? 0 : widthOf(letter);
  return hundredths * size / 100;
}

Label fitLabel(std::string_view words, int widthPx, int heightPx, int least, int most) {
  for (int size = most; size >= least; --size) {
    std::vector<std::string> lines = brokenLines(words, widthPx, size);
    if (fits(lines, widthPx, heightPx, size)) return {std::move(lines), size};
  }
  return {};
}

}  // namespace tern::generate
