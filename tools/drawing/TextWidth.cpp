#include "tools/drawing/TextWidth.hpp"

#include <algorithm>

#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::drawing {

namespace {

constexpr std::string_view ellipsis = "\xE2\x80\xA6";
constexpr std::string_view space = " \t\r\n";

// In parts of the font size.
double widthOf(char32_t code) {
  constexpr std::string_view narrow = "fijlrtI.,:;'|!()[]/- ";
  constexpr std::string_view wide = "mwMW%@";
  if (code < 0x80) {
    const char c = static_cast<char>(code);
    if (narrow.find(c) != std::string_view::npos) return 0.36;
    if (wide.find(c) != std::string_view::npos) return 0.95;
    return c >= 'A' && c <= 'Z' ? 0.7 : 0.6;
  }
  if (code >= 0x300 && code < 0x370) return 0;  // marks above and below letters
  const bool isPunctuation = code >= 0x2000 && code < 0x2070;
  return code < 0x1100 || isPunctuation ? 0.7 : 1.05;
}

// The longest beginning that is no wider than that.
std::string_view beginning(std::string_view text, double fontSize, double width) {
  std::size_t size = 0;
  while (size < text.size()) {
    const Utf8Character next = firstUtf8Character(text.substr(size));
    width -= widthOf(next.code) * fontSize;
    if (width < 0) break;
    size += next.size;
  }
  return text.substr(0, size);
}

std::string_view withoutBlanksBehind(std::string_view text) {
  return text.substr(0, text.find_last_not_of(space) + 1);
}

}  // namespace

double textWidth(std::string_view text, double fontSize) {
  double width = 0;
  while (!text.empty()) {
    const Utf8Character next = firstUtf8Character(text);
    width += widthOf(next.code) * fontSize;
    text.remove_prefix(next.size);
  }
  return width;
}

std::string fittedText(std::string_view text, double fontSize, double width) {
  if (textWidth(text, fontSize) <= width) return std::string(text);
  const double room = width - textWidth(ellipsis, fontSize);
  return std::string(withoutBlanksBehind(beginning(text, fontSize, room))).append(ellipsis);
}

std::vector<std::string> wrappedText(std::string_view text, double fontSize, double width,
                                     std::size_t mostLines) {
  std::vector<std::string> lines;
  while (lines.size() + 1 < mostLines && textWidth(text, fontSize) > width) {
    const std::string_view head = beginning(text, fontSize, width);
    std::size_t cut = head.find_last_of(space);
    if (cut == std::string_view::npos || cut == 0) cut = std::max<std::size_t>(head.size(), 1);
    lines.emplace_back(withoutBlanksBehind(text.substr(0, cut)));
    text.remove_prefix(std::min(text.find_first_not_of(space, cut), text.size()));
  }
  if (!text.empty() || lines.empty()) lines.push_back(fittedText(text, fontSize, width));
  return lines;
}

}  // namespace tern::drawing
