// Characters of texts in UTF-8, well formed as the Unicode standard defines it.
//
// Ownership: views of the caller's text. Threads: any.
// Fails: never; bytes that are not UTF-8 are told from characters.
//
//   for (std::string_view rest = name; !rest.empty();) {
//     const Utf8Character first = firstUtf8Character(rest);
//     width += widthOf(first.code);
//     rest.remove_prefix(first.size);
//   }
#pragma once

#include <cstddef>
#include <string_view>

namespace tern::inline v5 {

/// Whether the byte stands within a character, behind its first byte.
inline bool continuesUtf8(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

/// Bytes of the well-formed sequence of several bytes that the text starts with; 0 without one.
inline std::size_t utf8SequenceSize(const char* text, const char* end) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (end - text < 2) return 0;
  const unsigned lead = byte(0);
  if (lead < 0xC2 || lead > 0xF4) return 0;
  // Neither longer than needed, nor half a surrogate pair, nor beyond the last code point.
  const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (byte(1) < lowest || byte(1) > highest) return 0;
  const std::size_t size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (static_cast<std::size_t>(end - text) < size) return 0;
  for (std::size_t i = 2; i < size; ++i) {
    if (!continuesUtf8(text[i])) return 0;
  }
  return size;
}

/// Writes a code point, which must be one, and returns the position behind its one to four bytes.
inline char* putUtf8(char* out, char32_t code) {
  const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6U);
    put(0x80 | (code & 0x3FU));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12U);
    put(0x80 | (code >> 6U & 0x3FU));
    put(0x80 | (code & 0x3FU));
  } else {
    put(0xF0 | code >> 18U);
    put(0x80 | (code >> 12U & 0x3FU));
    put(0x80 | (code >> 6U & 0x3FU));
    put(0x80 | (code & 0x3FU));
  }
  return out;
}

/// A character of a text.
struct Utf8Character {
  /// Stands for a byte that is no part of a character.
  static constexpr char32_t replacement = 0xFFFD;

  /// Its code point.
  char32_t code;
  /// Bytes; 1 for a replacement.
  std::size_t size;
};

/// The first character of the text. REQUIRES: the text is not empty.
inline Utf8Character firstUtf8Character(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return {lead, 1};
  const std::size_t size = utf8SequenceSize(text.data(), text.data() + text.size());
  if (size == 0) return {Utf8Character::replacement, 1};
  char32_t code = lead & (0x7FU >> size);
  for (const char byte : text.substr(1, size - 1)) {
    code = code << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
  }
  return {code, size};
}

}  // namespace tern
