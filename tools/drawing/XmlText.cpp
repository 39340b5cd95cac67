#include "tools/drawing/XmlText.hpp"

#include "TernCoreKit/platform/Utf8.hpp"

namespace tern::drawing {

namespace {

// Whether XML takes the bytes of such a character; a replacement stands for bytes of any kind.
bool isAllowed(char32_t code) {
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
  return code != 0xFFFE && code != 0xFFFF && code != Utf8Character::replacement;
}

std::string_view written(char32_t code, std::string_view bytes) {
  switch (code) {
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '&':
      return "&amp;";
    case '"':
      return "&quot;";
    default:
      return isAllowed(code) ? bytes : "\xEF\xBF\xBD";
  }
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const Utf8Character first = firstUtf8Character(text);
    out += written(first.code, text.substr(0, first.size));
    text.remove_prefix(first.size);
  }
  return out;
}

}  // namespace tern::drawing
